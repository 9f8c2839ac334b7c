// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The program's own log: what went wrong, for whoever has to find out why. One file of about 1 MB, and the one before.
class LogFile
{
public:
    explicit LogFile(const QString &path);

    /// One entry with the moment of now; further lines of the text are indented. A log that cannot be written is no
    /// reason to stop: the text then goes to the error output.
    void write(const QString &text);
    const QString &path() const { return m_path; }
    QString previousPath() const; ///< the file that was full

    static constexpr qint64 fullAt = 1'000'000; ///< bytes

private:
    QString m_path;
};
