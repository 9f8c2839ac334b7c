// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/packageloader.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/errors.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TstPackageLoader : public QObject
{
    Q_OBJECT

private slots:
    void theClassesStayUntilTheLastUnload();
    void aLoaderThatGoesEndsItsLoads();
    void anUnloadTooManyDoesNothing();
    void aMissingPackageIsRefused();
    void aLibraryThatIsNoPackageIsRefused();
};

void TstPackageLoader::theClassesStayUntilTheLastUnload()
{
    PackageLoader package(u"qenMalharia"_s);
    package.load();
    const QStringList names = ClassRegistry::names();
    QVERIFY(!names.isEmpty());
    package.load();
    QCOMPARE(ClassRegistry::names(), names);
    package.unload();
    QCOMPARE(ClassRegistry::names(), names);
    package.unload();
    QVERIFY(ClassRegistry::names().isEmpty());
    package.load();
    QCOMPARE(ClassRegistry::names(), names);
}

void TstPackageLoader::aLoaderThatGoesEndsItsLoads()
{
    {
        PackageLoader package(u"qenMalharia"_s);
        package.load();
        package.load();
        QCOMPARE(package.loads(), 2);
    }
    QVERIFY(ClassRegistry::names().isEmpty());
}

void TstPackageLoader::anUnloadTooManyDoesNothing()
{
    PackageLoader package(u"qenMalharia"_s);
    package.unload();
    package.load();
    package.unload();
    package.unload();
    QCOMPARE(package.loads(), 0);
    package.load();
    QVERIFY(!ClassRegistry::names().isEmpty());
}

void TstPackageLoader::aMissingPackageIsRefused()
{
    PackageLoader package(u"qenNada"_s);
    QVERIFY_EXCEPTION_THROWN(package.load(), EQen);
    QCOMPARE(package.loads(), 0);
}

void TstPackageLoader::aLibraryThatIsNoPackageIsRefused()
{
    PackageLoader package(u"libqen_services"_s);
    QVERIFY_EXCEPTION_THROWN(package.load(), EQen);
    QVERIFY_EXCEPTION_THROWN(package.load(), EQen);
    QCOMPARE(package.loads(), 0);
}

QTEST_MAIN(TstPackageLoader)
#include "tst_packageloader.moc"
