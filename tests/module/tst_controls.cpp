// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/currencyedit.h"
#include "module/controls/dateedit.h"
#include "module/host_services/clock.h"
#include "module/host_services/theme.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QLocale>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QList<QVariantList> emitted(const QSignalSpy &spy)
{
    return spy;
}

} // namespace

/// A window with a number, a date and a number, in this tab order.
class TestControls : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Theme::apply(*qApp); }
    void init();
    void cleanup();

    void aNumberAtRestIsShownByItsMask();
    void aFocusedNumberIsPlainAndSelected();
    void typingReplacesTheNumber();
    void commaAndPointBothTypeTheDecimalComma();
    void theKeypadTypesTheDecimalComma();
    void whatIsNoNumberCannotBeTyped();
    void noMoreDigitsThanAColumnHolds();
    void leavingWithoutTypingKeepsAllDecimals();
    void undoingTheTypingBringsAllDecimalsBack();
    void anEmptyNumberIsZero();
    void theValueIsThatOfTheTextWhileTyping();
    void theProgramMayCorrectWhatIsTyped();
    void aNumberSetWhileInTheFieldIsShownAndSelected();
    void aNumberCanBePastedWithPointsAndBlanks();
    void aReadOnlyNumberKeepsItsMask();
    void theFirstClickSelectsAll();
    void aMenuOverTheNumberChangesNothing();
    void numbersDoNotFollowTheLocale();
    void numbersAreSetByTheirProperties();

    void aTypedDateIsWrittenOutOnLeaving_data();
    void aTypedDateIsWrittenOutOnLeaving();
    void enterTakesTheDate();
    void theDateIsThatOfTheTextWhileTyping();
    void anUnreadableDateStaysMarked();
    void aMarkedDateHasARedBorder();
    void lettersCannotBeTypedIntoADate();
    void anEmptiedDateIsInvalidAndNotMarked();
    void arrowsAndSignsMoveADay();
    void aMinusBetweenDayAndMonthIsASeparator();
    void theFirstStepInAnEmptyFieldIsToday();
    void theCalendarChoosesADate();
    void escapeClosesTheCalendar();
    void aReadOnlyDateCannotBeChanged();
    void textSetByTheProgramIsTakenAtOnce();

    void tabWalksThroughTheFieldsAndTakesWhatWasTyped();

private:
    void tab() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); }

    std::unique_ptr<QWidget> m_window;
    TCurrencyEdit *m_weight = nullptr;
    TDateEdit *m_day = nullptr;
    TCurrencyEdit *m_price = nullptr;
};

void TestControls::init()
{
    Clock::pin(QDateTime(QDate(2026, 3, 10), QTime(8, 0)));
    m_window = std::make_unique<QWidget>();
    auto *layout = new QVBoxLayout(m_window.get());
    layout->addWidget(m_weight = new TCurrencyEdit);
    layout->addWidget(m_day = new TDateEdit);
    layout->addWidget(m_price = new TCurrencyEdit);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_price->setFocus();
}

void TestControls::cleanup()
{
    m_window.reset();
    Clock::pin({});
}

void TestControls::aNumberAtRestIsShownByItsMask()
{
    m_weight->setValue(1234.5);
    QCOMPARE(m_weight->text(), u"1.234,50"_s);
    m_weight->setDisplayFormat(u"0.000"_s);
    QCOMPARE(m_weight->text(), u"1234,500"_s);
    QVERIFY(m_weight->alignment() & Qt::AlignRight);
}

void TestControls::aFocusedNumberIsPlainAndSelected()
{
    m_weight->setValue(1234.5678);
    m_weight->setFocus();
    QCOMPARE(m_weight->text(), u"1234,568"_s);
    QCOMPARE(m_weight->selectedText(), u"1234,568"_s);
    m_price->setFocus();
    QCOMPARE(m_weight->text(), u"1.234,57"_s);
}

void TestControls::typingReplacesTheNumber()
{
    m_weight->setValue(99);
    QSignalSpy changed(m_weight, &TCurrencyEdit::valueChanged);
    QSignalSpy edited(m_weight, &TCurrencyEdit::valueEdited);
    m_weight->setFocus();
    QTest::keyClicks(m_weight, u"12"_s);
    QCOMPARE(m_weight->value(), 12.0);
    QCOMPARE(emitted(changed), (QList<QVariantList>{{1.0}, {12.0}}));
    QCOMPARE(emitted(edited), (QList<QVariantList>{{1.0}, {12.0}}));
    m_weight->setValue(7);
    QCOMPARE(changed.count(), 3);
    QCOMPARE(edited.count(), 2);
}

void TestControls::commaAndPointBothTypeTheDecimalComma()
{
    m_weight->setFocus();
    QTest::keyClicks(m_weight, u"12.345"_s);
    QCOMPARE(m_weight->text(), u"12,345"_s);
    QCOMPARE(m_weight->value(), 12.345);
    m_weight->selectAll();
    QTest::keyClicks(m_weight, u"0,25"_s);
    QCOMPARE(m_weight->value(), 0.25);
}

void TestControls::theKeypadTypesTheDecimalComma()
{
    m_weight->setFocus();
    QTest::keyClick(m_weight, Qt::Key_1, Qt::KeypadModifier);
    QTest::keyClick(m_weight, Qt::Key_Period, Qt::KeypadModifier);
    QTest::keyClick(m_weight, Qt::Key_5, Qt::KeypadModifier);
    QCOMPARE(m_weight->text(), u"1,5"_s);
}

void TestControls::whatIsNoNumberCannotBeTyped()
{
    m_weight->setFocus();
    QTest::keyClicks(m_weight, u"a1b,,2x.3-4e5 67"_s);
    QCOMPARE(m_weight->text(), u"1,234"_s);
    m_weight->selectAll();
    QTest::keyClicks(m_weight, u"-2,5"_s);
    QCOMPARE(m_weight->value(), -2.5);
    m_price->setEditDecimals(0);
    m_price->setFocus();
    QTest::keyClicks(m_price, u"3,5"_s);
    QCOMPARE(m_price->text(), u"35"_s);
}

void TestControls::noMoreDigitsThanAColumnHolds()
{
    m_weight->setFocus();
    QTest::keyClicks(m_weight, u"1234567890123,4567"_s);
    QCOMPARE(m_weight->text(), u"123456789012,456"_s);
}

void TestControls::leavingWithoutTypingKeepsAllDecimals()
{
    m_weight->setValue(3.33367);
    QSignalSpy changed(m_weight, &TCurrencyEdit::valueChanged);
    QSignalSpy edited(m_weight, &TCurrencyEdit::valueEdited);
    m_weight->setFocus();
    QTest::keyClick(m_weight, Qt::Key_End);
    m_price->setFocus();
    QCOMPARE(m_weight->text(), u"3,33"_s);
    QVERIFY(m_weight->value() == 3.33367);
    QCOMPARE(changed.count() + edited.count(), 0);
}

void TestControls::undoingTheTypingBringsAllDecimalsBack()
{
    m_weight->setValue(3.33367);
    m_weight->setFocus();
    QTest::keyClicks(m_weight, u"8"_s);
    QCOMPARE(m_weight->value(), 8.0);
    while (m_weight->isUndoAvailable())
        m_weight->undo();
    QVERIFY(m_weight->value() == 3.33367);
}

void TestControls::anEmptyNumberIsZero()
{
    m_weight->setValue(5);
    m_weight->setFocus();
    QTest::keyClick(m_weight, Qt::Key_Delete);
    QCOMPARE(m_weight->text(), QString());
    QCOMPARE(m_weight->value(), 0.0);
    m_price->setFocus();
    QCOMPARE(m_weight->text(), u"0,00"_s);
    m_weight->setValue(std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(m_weight->text(), u"0,00"_s);
}

void TestControls::theValueIsThatOfTheTextWhileTyping()
{
    m_weight->setFocus();
    double seen = -1;
    connect(m_weight, &TCurrencyEdit::valueEdited, this, [&seen, this] { seen = m_weight->value(); });
    QTest::keyClicks(m_weight, u"12,"_s);
    QCOMPARE(seen, 12.0);
    QTest::keyClicks(m_weight, u"5"_s);
    QCOMPARE(seen, 12.5);
}

void TestControls::theProgramMayCorrectWhatIsTyped()
{
    connect(m_weight, &TCurrencyEdit::valueEdited, m_weight, [this](double value) {
        if (value > 100)
            m_weight->setValue(99.98765);
    });
    m_weight->setFocus();
    QTest::keyClicks(m_weight, u"500"_s);
    QVERIFY(m_weight->value() == 99.98765);
    QCOMPARE(m_weight->text(), u"99,988"_s);
}

void TestControls::aNumberSetWhileInTheFieldIsShownAndSelected()
{
    m_weight->setFocus();
    m_weight->setValue(21.35);
    QCOMPARE(m_weight->selectedText(), u"21,35"_s);
    QTest::keyClicks(m_weight, u"7"_s);
    QCOMPARE(m_weight->value(), 7.0);
}

void TestControls::aNumberCanBePastedWithPointsAndBlanks()
{
    m_weight->setFocus();
    QApplication::clipboard()->setText(u" 1.234,50 "_s);
    m_weight->paste();
    QCOMPARE(m_weight->value(), 1234.5);
    QCOMPARE(m_weight->text(), u"1234,5"_s);
    m_weight->selectAll();
    QApplication::clipboard()->setText(u"12 rolos"_s);
    m_weight->paste();
    QCOMPARE(m_weight->value(), 1234.5);
    m_weight->selectAll();
    QApplication::clipboard()->setText(u" 250,75\n"_s);
    m_weight->paste();
    QCOMPARE(m_weight->text(), u"250,75"_s);
}

void TestControls::aReadOnlyNumberKeepsItsMask()
{
    m_weight->setValue(1234.5);
    m_weight->setReadOnly(true);
    m_weight->setFocus();
    QCOMPARE(m_weight->text(), u"1.234,50"_s);
    QTest::keyClicks(m_weight, u"9"_s);
    m_weight->setValue(2000);
    QCOMPARE(m_weight->text(), u"2.000,00"_s);
    m_weight->setReadOnly(false);
    QCOMPARE(m_weight->selectedText(), u"2000"_s);
}

void TestControls::theFirstClickSelectsAll()
{
    m_weight->setValue(12.5);
    QTest::mouseClick(m_weight, Qt::LeftButton);
    QVERIFY(m_weight->hasFocus());
    QCOMPARE(m_weight->selectedText(), u"12,5"_s);
    QTest::mouseClick(m_weight, Qt::LeftButton);
    QCOMPARE(m_weight->selectedText(), QString());
}

void TestControls::aMenuOverTheNumberChangesNothing()
{
    m_weight->setValue(12.5);
    m_weight->setFocus();
    m_weight->setSelection(0, 2);
    QMenu menu;
    menu.addAction(u"Copiar"_s);
    menu.popup(QPoint(0, 0));
    QTRY_VERIFY(menu.isVisible());
    menu.close();
    QCOMPARE(m_weight->selectedText(), u"12"_s);
}

void TestControls::numbersDoNotFollowTheLocale()
{
    for (const QLocale &locale :
        {QLocale(QLocale::Portuguese, QLocale::Brazil), QLocale(QLocale::English, QLocale::UnitedStates)}) {
        const QLocale before;
        QLocale::setDefault(locale);
        const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
        TCurrencyEdit field;
        field.setValue(1234.5);
        QCOMPARE(field.text(), u"1.234,50"_s);
    }
}

void TestControls::numbersAreSetByTheirProperties()
{
    QVERIFY(m_weight->setProperty("DisplayFormat", u",0.000"_s));
    QVERIFY(m_weight->setProperty("EditDecimals", 1));
    QVERIFY(m_weight->setProperty("Value", 1234.25));
    QCOMPARE(m_weight->text(), u"1.234,250"_s);
    m_weight->setFocus();
    QCOMPARE(m_weight->text(), u"1234,3"_s);
    QCOMPARE(m_weight->property("Value").toDouble(), 1234.25);
}

void TestControls::aTypedDateIsWrittenOutOnLeaving_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QDate>("date");
    QTest::newRow("whole") << u"31/12/2026"_s << QDate(2026, 12, 31);
    QTest::newRow("digits") << u"31122026"_s << QDate(2026, 12, 31);
    QTest::newRow("six digits") << u"311226"_s << QDate(2026, 12, 31);
    QTest::newRow("this year") << u"31/12"_s << QDate(2026, 12, 31);
    QTest::newRow("this month") << u"31"_s << QDate(2026, 3, 31);
    QTest::newRow("points") << u"1.2.26"_s << QDate(2026, 2, 1);
}

void TestControls::aTypedDateIsWrittenOutOnLeaving()
{
    QFETCH(QString, typed);
    QFETCH(QDate, date);
    QSignalSpy changed(m_day, &TDateEdit::dateChanged);
    m_day->setFocus();
    QTest::keyClicks(m_day, typed);
    QCOMPARE(changed.count(), 0);
    m_price->setFocus();
    QCOMPARE(m_day->date(), date);
    QCOMPARE(m_day->text(), date.toString(u"dd/MM/yyyy"_s));
    QCOMPARE(emitted(changed), (QList<QVariantList>{{date}}));
}

void TestControls::enterTakesTheDate()
{
    QSignalSpy changed(m_day, &TDateEdit::dateChanged);
    m_day->setFocus();
    QTest::keyClicks(m_day, u"5"_s);
    QTest::keyClick(m_day, Qt::Key_Return);
    QCOMPARE(m_day->text(), u"05/03/2026"_s);
    QCOMPARE(changed.count(), 1);
    m_price->setFocus();
    QCOMPARE(changed.count(), 1);
}

void TestControls::theDateIsThatOfTheTextWhileTyping()
{
    m_day->setDate(QDate(2026, 1, 1));
    m_day->setFocus();
    QTest::keyClicks(m_day, u"31/12"_s);
    QCOMPARE(m_day->date(), QDate(2026, 12, 31));
    QTest::keyClicks(m_day, u"/"_s);
    QVERIFY(!m_day->date().isValid());
    QVERIFY(m_day->hasInvalidText());
    QVERIFY(!m_day->property("invalid").toBool());
}

void TestControls::anUnreadableDateStaysMarked()
{
    m_day->setDate(QDate(2026, 1, 1));
    QSignalSpy changed(m_day, &TDateEdit::dateChanged);
    m_day->setFocus();
    QTest::keyClicks(m_day, u"31/02/2026"_s);
    m_price->setFocus();
    QCOMPARE(m_day->text(), u"31/02/2026"_s);
    QVERIFY(!m_day->date().isValid());
    QVERIFY(m_day->hasInvalidText());
    QVERIFY(m_day->property("invalid").toBool());
    QCOMPARE(emitted(changed), (QList<QVariantList>{{QDate()}}));

    m_day->setFocus();
    QTest::keyClicks(m_day, u"28/02/2026"_s);
    m_price->setFocus();
    QCOMPARE(m_day->date(), QDate(2026, 2, 28));
    QVERIFY(!m_day->property("invalid").toBool());
}

void TestControls::aMarkedDateHasARedBorder()
{
    const auto border = [this] { return m_day->grab().toImage().pixelColor(m_day->width() / 2, 0); };
    QCOMPARE(border(), QColor(0xb5, 0xbc, 0xbf));
    m_day->setText(u"31/02/2026"_s);
    QCOMPARE(border(), QColor(0xc6, 0x28, 0x28));
    m_day->setFocus();
    QCOMPARE(border(), QColor(0xc6, 0x28, 0x28));
    m_day->setDate(QDate(2026, 2, 28));
    QCOMPARE(border(), QColor(0x00, 0x79, 0x6b));
}

void TestControls::lettersCannotBeTypedIntoADate()
{
    m_day->setFocus();
    QTest::keyClicks(m_day, u"3x1/a12"_s);
    QCOMPARE(m_day->text(), u"31/12"_s);
}

void TestControls::anEmptiedDateIsInvalidAndNotMarked()
{
    m_day->setDate(QDate(2026, 1, 1));
    m_day->setFocus();
    QTest::keyClick(m_day, Qt::Key_Delete);
    QVERIFY(!m_day->date().isValid());
    m_price->setFocus();
    QCOMPARE(m_day->text(), QString());
    QVERIFY(!m_day->hasInvalidText());
    QVERIFY(!m_day->property("invalid").toBool());
    m_day->setDate(QDate(2026, 1, 1));
    m_day->setDate(QDate());
    QCOMPARE(m_day->text(), QString());
}

void TestControls::arrowsAndSignsMoveADay()
{
    m_day->setDate(QDate(2026, 2, 28));
    m_day->setFocus();
    QTest::keyClick(m_day, Qt::Key_Up);
    QCOMPARE(m_day->text(), u"01/03/2026"_s);
    QTest::keyClick(m_day, Qt::Key_Down);
    QTest::keyClick(m_day, Qt::Key_Down);
    QCOMPARE(m_day->date(), QDate(2026, 2, 27));
    QTest::keyClicks(m_day, u"+++"_s);
    QCOMPARE(m_day->date(), QDate(2026, 3, 2));
    QTest::keyClicks(m_day, u"-"_s);
    QCOMPARE(m_day->date(), QDate(2026, 3, 1));
    QCOMPARE(m_day->selectedText(), u"01/03/2026"_s);
}

void TestControls::aMinusBetweenDayAndMonthIsASeparator()
{
    m_day->setDate(QDate(2026, 2, 28));
    m_day->setFocus();
    QTest::keyClicks(m_day, u"31-12-26"_s);
    m_price->setFocus();
    QCOMPARE(m_day->date(), QDate(2026, 12, 31));
}

void TestControls::theFirstStepInAnEmptyFieldIsToday()
{
    m_day->setFocus();
    QTest::keyClick(m_day, Qt::Key_Down);
    QCOMPARE(m_day->date(), QDate(2026, 3, 10));
}

void TestControls::theCalendarChoosesADate()
{
    m_day->setDate(QDate(2026, 2, 28));
    m_day->setFocus();
    QTest::keyClick(m_day, Qt::Key_Down, Qt::AltModifier);
    QPointer<QCalendarWidget> calendar = m_day->findChild<QCalendarWidget *>();
    QVERIFY(calendar);
    QTRY_VERIFY(calendar->isVisible());
    QCOMPARE(calendar->selectedDate(), QDate(2026, 2, 28));
    QWidget *view = calendar->findChild<QWidget *>(u"qt_calendar_calendarview"_s);
    QVERIFY(view);
    QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClick(view, Qt::Key_Return);
    QCOMPARE(m_day->date(), QDate(2026, 3, 1));
    QTRY_VERIFY(!calendar);
    QCOMPARE(m_window->focusWidget(), m_day);
}

void TestControls::escapeClosesTheCalendar()
{
    m_day->setDate(QDate(2026, 2, 28));
    m_day->setFocus();
    m_day->openCalendar();
    QPointer<QCalendarWidget> calendar = m_day->findChild<QCalendarWidget *>();
    QVERIFY(calendar);
    QTest::keyClick(calendar->findChild<QWidget *>(u"qt_calendar_calendarview"_s), Qt::Key_Escape);
    QTRY_VERIFY(!calendar);
    QCOMPARE(m_day->date(), QDate(2026, 2, 28));
}

void TestControls::aReadOnlyDateCannotBeChanged()
{
    m_day->setDate(QDate(2026, 2, 28));
    m_day->setReadOnly(true);
    m_day->setFocus();
    QTest::keyClick(m_day, Qt::Key_Up);
    QTest::keyClicks(m_day, u"+1"_s);
    QTest::keyClick(m_day, Qt::Key_Down, Qt::AltModifier);
    QVERIFY(!m_day->findChild<QCalendarWidget *>());
    QCOMPARE(m_day->date(), QDate(2026, 2, 28));
    m_day->setDate(QDate(2026, 3, 1));
    QCOMPARE(m_day->text(), u"01/03/2026"_s);
}

void TestControls::textSetByTheProgramIsTakenAtOnce()
{
    m_day->setText(u"31/12"_s);
    QCOMPARE(m_day->text(), u"31/12/2026"_s);
    QCOMPARE(m_day->property("Date").toDate(), QDate(2026, 12, 31));
    m_day->clear();
    QVERIFY(!m_day->date().isValid());
    m_weight->setText(u"12,5"_s);
    QCOMPARE(m_weight->value(), 12.5);
}

void TestControls::tabWalksThroughTheFieldsAndTakesWhatWasTyped()
{
    m_weight->setFocus();
    QTest::keyClicks(m_weight, u"1234.5"_s);
    tab();
    QVERIFY(m_day->hasFocus());
    QCOMPARE(m_weight->text(), u"1.234,50"_s);
    QTest::keyClicks(m_day, u"0104"_s);
    tab();
    QVERIFY(m_price->hasFocus());
    QCOMPARE(m_day->text(), u"01/04/2026"_s);
    QTest::keyClicks(m_price, u"7"_s);
    QTest::keyClick(m_price, Qt::Key_Backtab);
    QVERIFY(m_day->hasFocus());
    QCOMPARE(m_day->selectedText(), u"01/04/2026"_s);
    QCOMPARE(m_price->text(), u"7,00"_s);
}

QTEST_MAIN(TestControls)
#include "tst_controls.moc"
