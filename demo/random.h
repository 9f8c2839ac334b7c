// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <random>

namespace Demo {

/// Numbers that are the same on every machine. The library's distributions differ between compilers, so they are not
/// used here.
class Random
{
public:
    explicit Random(quint32 seed)
        : m_engine(seed)
    {
    }

    /// Both ends included.
    int between(int lowest, int highest) { return lowest + int(quint64(m_engine()) * (highest - lowest + 1) >> 32); }
    bool oneIn(int n) { return between(1, n) == 1; }

private:
    std::mt19937 m_engine;
};

} // namespace Demo
