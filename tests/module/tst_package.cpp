// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/form.h"
#include "module/package.h"
#include "tests/support/recordinghost.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TfmPrimeira : public TForm
{
    Q_OBJECT

public:
    bool created = false;

protected:
    void FormCreate() override { created = true; }
};

class TfmSegunda : public TForm
{
    Q_OBJECT
};

class TestPackage : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void aLoadedPackageRegistersItsScreensInOrder();
    void twoLoadsRegisterOnceAndTheLastUnloadWithdraws();
    void aStopWithoutAStartDoesNothing();
    void unitsThatWereStartedAloneStayUntilTheirOwnStop();
    void aScreenIsCreatedReadyToBeShown();
    void anUnknownScreenIsNotFound();

private:
    Unit m_first = Unit::of<TfmPrimeira>(u"Primeira Tela"_s);
    Unit m_second = Unit::of<TfmSegunda>(u"Segunda Tela"_s);
    Package m_package{{&m_first, &m_second}};
};

void TestPackage::cleanup()
{
    while (!ClassRegistry::names().isEmpty())
        m_package.finalize();
}

void TestPackage::aLoadedPackageRegistersItsScreensInOrder()
{
    QCOMPARE(ClassRegistry::names(), QStringList());
    m_package.initialize();
    QCOMPARE(ClassRegistry::names(), QStringList({u"TfmPrimeira"_s, u"TfmSegunda"_s}));
    QCOMPARE(ClassRegistry::find(u"TfmSegunda"_s)->caption, u"Segunda Tela"_s);
}

void TestPackage::twoLoadsRegisterOnceAndTheLastUnloadWithdraws()
{
    m_package.initialize();
    m_package.initialize();
    QCOMPARE(ClassRegistry::names().size(), 2);
    m_package.finalize();
    QCOMPARE(ClassRegistry::names().size(), 2);
    m_package.finalize();
    QCOMPARE(ClassRegistry::names(), QStringList());
}

void TestPackage::aStopWithoutAStartDoesNothing()
{
    m_package.finalize();
    m_package.initialize();
    QCOMPARE(ClassRegistry::names().size(), 2);
    m_package.finalize();
    m_package.finalize();
    QCOMPARE(ClassRegistry::names(), QStringList());
    m_package.initialize();
    QCOMPARE(ClassRegistry::names().size(), 2);
}

void TestPackage::unitsThatWereStartedAloneStayUntilTheirOwnStop()
{
    m_second.initialize();
    m_package.initialize();
    m_package.finalize();
    QCOMPARE(ClassRegistry::names(), QStringList(u"TfmSegunda"_s));
    m_second.finalize();
    QCOMPARE(ClassRegistry::names(), QStringList());
}

void TestPackage::aScreenIsCreatedReadyToBeShown()
{
    const RecordingHost host;
    m_package.initialize();
    const std::unique_ptr<QWidget> screen(ClassRegistry::find(u"TfmPrimeira"_s)->create());
    auto *form = qobject_cast<TfmPrimeira *>(screen.get());
    QVERIFY(form->created);
    QCOMPARE(form->windowTitle(), u"Primeira Tela"_s);
    QCOMPARE(form->className(), u"TfmPrimeira"_s);
    QVERIFY(!form->isVisible());
    QVERIFY(form->testAttribute(Qt::WA_DeleteOnClose));
}

void TestPackage::anUnknownScreenIsNotFound()
{
    m_package.initialize();
    QVERIFY(!ClassRegistry::find(u"TfmNada"_s));
    QVERIFY(!ClassRegistry::find(u"tfmprimeira"_s));
}

QTEST_MAIN(TestPackage)
#include "tst_package.moc"
