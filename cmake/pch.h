// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QtCore>
#include <QtGui/QtGui>
#include <QtSql/QtSql>
#include <QtWidgets/QtWidgets>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>
