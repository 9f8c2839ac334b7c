// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLibrary>
#include <QString>

/// Loads a package of screens, once per call of load(); each load is ended by an unload(), the last one at the latest
/// when the loader goes. The package counts them itself.
class PackageLoader
{
public:
    /// `name` is that of the package file, without folder and ending: "qenMalharia".
    explicit PackageLoader(const QString &name);
    ~PackageLoader();
    Q_DISABLE_COPY_MOVE(PackageLoader)

    /// Throws EQen when there is no such package, or when it is none.
    void load();
    void unload();
    int loads() const { return m_loads; }

private:
    void open();

    QString m_name;
    QLibrary m_library;
    QFunctionPointer m_initialize = nullptr;
    QFunctionPointer m_finalize = nullptr;
    int m_loads = 0;
};
