// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class TTIQuery;

/// The rows as texts of these columns, in an order of their own: by them two readings of the same rows are compared.
QStringList rowTexts(TTIQuery &rows, const QStringList &columns);
