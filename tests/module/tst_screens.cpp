// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for every screen of the package.

#include "module/form.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/icons.h"
#include "module/host_services/pesquisa.h"
#include "tests/support/engines.h"
#include "tests/support/messageanswers.h"
#include "tests/support/teststation.h"

#include <QAbstractButton>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_screens : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyMethodNamedLikeAnEventHasItsControl();
    void everyScreenIsTitledByItsCaption();
    void everySearchNamesItsTableAndItsField();
    void everyButtonNamesAnIconThatExists();
    void aClosedScreenIsGoneAndOpensAfresh();
    void aHundredOpeningsOfEveryScreenLeaveNothingBehind();
    void severalScreensAreOpenTogether();
};

void tst_screens::everyMethodNamedLikeAnEventHasItsControl()
{
    TestStation station(Engines::current());
    const QStringList names = ClassRegistry::names();
    QVERIFY(!names.isEmpty());
    for (const QString &name : names) {
        auto *form = qobject_cast<TForm *>(station.open(name));
        QVERIFY2(form, qPrintable(name));
        QVERIFY2(form->methodsWithoutControl().isEmpty(),
            qPrintable(name + u": "_s + form->methodsWithoutControl().join(u", "_s)));
        station.closeForm();
    }
}

void tst_screens::everyScreenIsTitledByItsCaption()
{
    TestStation station(Engines::current());
    for (const QString &name : ClassRegistry::names()) {
        station.open(name);
        QCOMPARE(station.form()->windowTitle(), ClassRegistry::find(name)->caption);
        QCOMPARE(u'T' + station.form()->objectName(), name);
        station.closeForm();
    }
}

void tst_screens::everySearchNamesItsTableAndItsField()
{
    TestStation station(Engines::current());
    for (const QString &name : ClassRegistry::names()) {
        station.open(name);
        for (const TPesquisa *search : station.form()->findChildren<TPesquisa *>()) {
            const QString which = name + u'.' + search->objectName();
            QVERIFY2(!search->table().isEmpty() && !search->columns().isEmpty(), qPrintable(which));
            QVERIFY2(search->isHidden() || station.form()->findChild<QLineEdit *>(search->fieldName()),
                qPrintable(which));
            const QString first = search->columns().section(u'=', 0, 0);
            station.database.run(u"SELECT %1 FROM {%2} WHERE 1 = 0"_s.arg(first, search->table()));
        }
        station.closeForm();
    }
}

void tst_screens::everyButtonNamesAnIconThatExists()
{
    TestStation station(Engines::current());
    for (const QString &name : ClassRegistry::names()) {
        station.open(name);
        for (const QAbstractButton *button : station.form()->findChildren<QAbstractButton *>()) {
            const QString icon = button->property("icon_name").toString();
            if (!icon.isEmpty())
                QVERIFY2(!Icons::get(icon).isNull(), qPrintable(name + u'.' + button->objectName()));
        }
        station.closeForm();
    }
}

void tst_screens::aClosedScreenIsGoneAndOpensAfresh()
{
    TestStation station(Engines::current());
    for (const QString &name : ClassRegistry::names()) {
        const QPointer<QWidget> first = station.open(name);
        station.closeForm();
        QVERIFY2(!first, qPrintable(name));
        QVERIFY2(!station.host.openForm(name), qPrintable(name));
        QVERIFY(station.open(name));
        station.closeForm();
    }
}

void tst_screens::aHundredOpeningsOfEveryScreenLeaveNothingBehind()
{
    TestStation station(Engines::current());
    for (const QString &name : ClassRegistry::names()) {
        for (int time = 0; time < 100; ++time) {
            QPointer<QWidget> form = station.host.loadForm(u"qenMalharia"_s, name, false, true);
            QVERIFY2(form, qPrintable(name));
            QCoreApplication::processEvents();
            form->close();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY2(!form, qPrintable(name));
        }
        // No shared table stays open, and no form is left behind.
        QVERIFY2(!station.tabela.tabela(u"tbEntidade"_s), qPrintable(name));
        QVERIFY2(!station.host.openForm(name), qPrintable(name));
    }
}

void tst_screens::severalScreensAreOpenTogether()
{
    TestStation station(Engines::current());
    QList<QPointer<QWidget>> forms;
    for (const QString &name : ClassRegistry::names())
        forms.append(station.open(name));
    for (const QPointer<QWidget> &form : forms)
        QVERIFY(form && form->isVisible());
    // A class that is open already comes to the front instead of a second one.
    QCOMPARE(station.open(ClassRegistry::names().first()), forms.first().data());
}

QTEST_MAIN(tst_screens)
#include "tst_screens.moc"
