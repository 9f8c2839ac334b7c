// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <exception>

class QWidget;

/// What an exception says: a sentence for the user, and the words of whoever failed.
struct ExceptionText
{
    QString sentence;
    QString details; ///< may be empty

    static ExceptionText of(const std::exception_ptr &error);
};

/// One box with the sentence, titled like the form, and a button "Detalhes..." where there are details. Returns when
/// it was closed; the form may be null.
void showExceptionBox(QWidget *form, const ExceptionText &text);
