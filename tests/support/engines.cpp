// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/engines.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void addRow(const QString &engine)
{
    if (QTest::currentTestFailed())
        return;
    const QString reason = Engines::missing(engine);
    if (!reason.isEmpty()) {
        QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
        return;
    }
    QTest::newRow(qPrintable(engine)) << engine;
}

} // namespace

namespace Engines {

QStringList environment(const char *variable)
{
    return qEnvironmentVariable(variable).split(u';', Qt::SkipEmptyParts);
}

QString missing(const QString &engine)
{
    static const QString how = u"%1 is not set. Run: eval \"$(packaging/test-engines start build/engines)\""_s;
    if (engine == u"postgres"_s && environment("QEN_TEST_POSTGRES").size() != 3)
        return how.arg(u"QEN_TEST_POSTGRES"_s);
    if (engine == u"firebird-server"_s && environment("QEN_TEST_FIREBIRD").size() != 3)
        return how.arg(u"QEN_TEST_FIREBIRD"_s);
    return {};
}

void addEngineRows()
{
    QTest::addColumn<QString>("engine");
    addRow(u"firebird"_s);
    addRow(u"postgres"_s);
}

void addServerRow()
{
    addRow(u"firebird-server"_s);
}

QString current()
{
    return *static_cast<QString *>(QTest::qGlobalData("engine", qMetaTypeId<QString>()));
}

} // namespace Engines
