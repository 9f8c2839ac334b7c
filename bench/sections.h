// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/measure.h"

class BenchDatabase;
class BenchStation;

/// What is measured, section by section.
struct Bench
{
    const BenchDatabase &database;
    BenchStation &station;
    Effort effort;
};

/// Opening each screen of the package, from the menu's call to its first paint, in the company of few orders and in
/// that of many.
QVector<Comparison> measureScreens(const Bench &bench);
/// The barcode station: leaving the order field, and writing one roll off.
QVector<Comparison> measureRolls(const Bench &bench);
/// The search over the register of all rolls.
QVector<Comparison> measureSearch(const Bench &bench);
/// The whole program, from its start to the login window.
QVector<Comparison> measureStart(const Bench &bench);
