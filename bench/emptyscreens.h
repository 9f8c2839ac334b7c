// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// For each screen an empty one of the same kind: the same form with the same controls in the same frame, but no record
/// in it and nothing behind it. It is what the toolkit needs to make and paint such a window.
namespace EmptyScreens {

/// Offers them to the host while the object lives.
class Registration
{
public:
    Registration();
    ~Registration();
    Q_DISABLE_COPY_MOVE(Registration)
};

/// The empty one's class name; empty when the screen has none.
QString classLike(const QString &screen);

} // namespace EmptyScreens
