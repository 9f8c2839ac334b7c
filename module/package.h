// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/classregistry.h"

#include <QString>
#include <QVector>

#include <memory>

/// One unit of a package: it registers its one screen class. Starts are counted, so that a second one does nothing
/// and only the last stop withdraws the class.
class Unit
{
public:
    template <class Form> static Unit of(const QString &caption)
    {
        return Unit({QString::fromLatin1(Form::staticMetaObject.className()), caption, [] {
                         auto form = std::make_unique<Form>();
                         form->Create();
                         return form.release();
                     }});
    }

    void initialize();
    void finalize();

private:
    explicit Unit(const ScreenClass &screen);

    ScreenClass m_screen;
    int m_starts = 0;
};

/// Runs the units' starts in their order, and their stops in the reverse one.
class Package
{
public:
    explicit Package(const QVector<Unit *> &units);
    void initialize();
    void finalize();

private:
    QVector<Unit *> m_units;
};
