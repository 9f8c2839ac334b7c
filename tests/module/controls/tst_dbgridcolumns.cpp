// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/form.h"
#include "tests/module/controls/rollgrid.h"
#include "tests/support/recordinghost.h"

using namespace Qt::StringLiterals;

namespace {

class TfmRolos : public TForm
{
    Q_OBJECT
};

class TfmOutra : public TForm
{
    Q_OBJECT
};

} // namespace

/// Columns that the user resizes and moves, and that come back as he left them.
class TestDBGridColumns : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_host = std::make_unique<RecordingHost>(); }
    void cleanup();

    void widthAndOrderComeBackWithTheScreen();
    void columnsAreDraggedWithTheMouse();
    void untouchedColumnsAreNotKept();
    void eachScreenAndGridHasItsOwn();
    void columnsThatAreGoneArePassedOver();
    void newColumnsFollowTheOthers();
    void unreadableSettingsAreNoColumns_data();
    void unreadableSettingsAreNoColumns();
    void aChosenWidthStaysWhenRowsComeAndWindowsGrow();
    void aGridWithTwoSetsOfColumnsKeepsTheLastChosen();
    void restoredColumnsAreThoseOfTheScreen();
    void aGridOutsideOfAScreenKeepsNothing();
    void untouchedColumnsFillTheGrid();

private:
    template <class Screen = TfmRolos> void open(const QString &name = u"DBGrid"_s);
    void close();
    QString kept() const { return m_host->settings().value(u"Grades/TfmRolos.DBGrid"_s).toString(); }
    QStringList titles() const;

    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<TForm> m_form;
    std::unique_ptr<RollGrid> m;
};

void TestDBGridColumns::cleanup()
{
    close();
    m_host.reset();
}

/// The screen with its grid and three rolls, as it is created and shown.
template <class Screen> void TestDBGridColumns::open(const QString &name)
{
    m_form = std::make_unique<Screen>();
    m_form->setAttribute(Qt::WA_DeleteOnClose, false);
    m_form->resize(720, 300);
    m = std::make_unique<RollGrid>(m_form.get(), name);
    m->add(u"001"_s, 20.5);
    m->add(u"002"_s, 19);
    m->show();
    QCoreApplication::processEvents();
}

void TestDBGridColumns::close()
{
    if (m_form)
        m_form->close();
    m.reset();
    m_form.reset();
}

QStringList TestDBGridColumns::titles() const
{
    QStringList titles;
    for (int place = 0; place < m->header()->count(); ++place)
        titles.append(m->grid->rows()->headerData(m->header()->logicalIndex(place), Qt::Horizontal).toString());
    return titles;
}

void TestDBGridColumns::widthAndOrderComeBackWithTheScreen()
{
    open();
    m->header()->resizeSection(1, 133);
    m->header()->moveSection(3, 0);
    close();
    QVERIFY2(kept().startsWith(u"TURNO:"_s), qPrintable(kept()));
    QVERIFY2(kept().contains(u"QTDE:133"_s), qPrintable(kept()));
    open();
    QCOMPARE(titles(), (QStringList{u"Turno"_s, u"Rolo"_s, u"Peso"_s, u"Data"_s}));
    QCOMPARE(m->header()->sectionSize(1), 133);
}

void TestDBGridColumns::columnsAreDraggedWithTheMouse()
{
    open();
    QWidget *header = m->header()->viewport();
    const int before = m->header()->sectionSize(1);
    const QPoint edge(m->header()->sectionViewportPosition(1) + before - 1, m->header()->height() / 2);
    QTest::mousePress(header, Qt::LeftButton, {}, edge);
    QTest::mouseMove(header, edge + QPoint(20, 0));
    QTest::mouseMove(header, edge + QPoint(40, 0));
    QTest::mouseRelease(header, Qt::LeftButton, {}, edge + QPoint(40, 0));
    QCOMPARE(m->header()->sectionSize(1), before + 40);
    QCOMPARE(m->grid->rows()->sortColumn(), -1);
    close();
    QVERIFY2(kept().contains(u"QTDE:%1"_s.arg(before + 40)), qPrintable(kept()));
}

void TestDBGridColumns::untouchedColumnsAreNotKept()
{
    open();
    m->clickTitle(1);
    m->add(u"003"_s, 1);
    m_form->resize(900, 400);
    QCoreApplication::processEvents();
    close();
    QVERIFY(m_host->settings().allKeys().isEmpty());
}

void TestDBGridColumns::eachScreenAndGridHasItsOwn()
{
    open();
    m->header()->resizeSection(0, 211);
    close();
    open<TfmOutra>();
    QVERIFY(m->header()->sectionSize(0) != 211);
    close();
    open(u"DBGrid2"_s);
    QVERIFY(m->header()->sectionSize(0) != 211);
    close();
    open();
    QCOMPARE(m->header()->sectionSize(0), 211);
}

void TestDBGridColumns::columnsThatAreGoneArePassedOver()
{
    m_host->settings().setValue(u"Grades/TfmRolos.DBGrid"_s, u"LOTE:80;DATA:150;CHAVE:20;NUM_BAIXA:90"_s);
    open();
    QCOMPARE(titles().mid(0, 2), (QStringList{u"Data"_s, u"Rolo"_s}));
    QCOMPARE(m->header()->sectionSize(2), 150);
    QCOMPARE(m->header()->sectionSize(0), 90);
}

void TestDBGridColumns::newColumnsFollowTheOthers()
{
    m_host->settings().setValue(u"Grades/TfmRolos.DBGrid"_s, u"TURNO:60;NUM_BAIXA:90"_s);
    open();
    QCOMPARE(titles(), (QStringList{u"Turno"_s, u"Rolo"_s, u"Peso"_s, u"Data"_s}));
    const int needed = m->grid->fontMetrics().horizontalAdvance(u"09/03/2026"_s);
    QVERIFY(m->header()->sectionSize(2) > needed);
}

void TestDBGridColumns::unreadableSettingsAreNoColumns_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("nothing") << u""_s;
    QTest::newRow("no fields") << u"::;;7"_s;
    QTest::newRow("other fields") << u"A:1;B:2"_s;
}

void TestDBGridColumns::unreadableSettingsAreNoColumns()
{
    open();
    const int usual = m->header()->sectionSize(1);
    close();
    QFETCH(QString, value);
    m_host->settings().setValue(u"Grades/TfmRolos.DBGrid"_s, value);
    open();
    QCOMPARE(titles(), (QStringList{u"Rolo"_s, u"Peso"_s, u"Data"_s, u"Turno"_s}));
    QCOMPARE(m->header()->sectionSize(1), usual);
    close();
    m_host->settings().setValue(u"Grades/TfmRolos.DBGrid"_s, u"QTDE:zero;DATA:-5;NUM_BAIXA:999999"_s);
    open();
    QVERIFY(m->header()->sectionSize(1) > 0); // can be caught with the mouse
    QVERIFY(m->header()->sectionSize(2) > 0);
    QVERIFY(m->header()->sectionSize(0) < 5000);
}

void TestDBGridColumns::aChosenWidthStaysWhenRowsComeAndWindowsGrow()
{
    open();
    m->header()->resizeSection(0, 61);
    m->rolls.EmptyDataSet();
    m->add(u"a number of many letters"_s, 1);
    m_form->resize(1000, 500);
    QCoreApplication::processEvents();
    QCOMPARE(m->header()->sectionSize(0), 61);
}

void TestDBGridColumns::aGridWithTwoSetsOfColumnsKeepsTheLastChosen()
{
    open();
    m->header()->resizeSection(0, 61);
    m->rolls.CreateDataSet({{u"LOTE"_s, TField::Type::Text, 10}, {u"NUM_BAIXA"_s, TField::Type::Text, 10}});
    QCOMPARE(m->header()->sectionSize(1), 61); // the column that both have
    QCOMPARE(titles(), (QStringList{u"NUM_BAIXA"_s, u"LOTE"_s}));
    close();
    QVERIFY2(kept().startsWith(u"NUM_BAIXA:61"_s), qPrintable(kept()));
}

void TestDBGridColumns::restoredColumnsAreThoseOfTheScreen()
{
    open();
    const int usual = m->header()->sectionSize(1);
    m->header()->resizeSection(1, 133);
    m->header()->moveSection(3, 0);
    close();
    open();
    m->grid->restoreColumns();
    QCOMPARE(titles(), (QStringList{u"Rolo"_s, u"Peso"_s, u"Data"_s, u"Turno"_s}));
    QCOMPARE(m->header()->sectionSize(1), usual);
    close();
    QVERIFY(m_host->settings().allKeys().isEmpty());
}

void TestDBGridColumns::aGridOutsideOfAScreenKeepsNothing()
{
    m = std::make_unique<RollGrid>();
    m->show();
    m->header()->resizeSection(1, 133);
    m->grid->hide();
    QVERIFY(m_host->settings().allKeys().isEmpty());
}

void TestDBGridColumns::untouchedColumnsFillTheGrid()
{
    open();
    int total = 0;
    for (int column = 0; column < m->header()->count(); ++column)
        total += m->header()->sectionSize(column);
    QCOMPARE(total, m->grid->viewport()->width()); // what is left goes to the longest text
}

QTEST_MAIN(TestDBGridColumns)
#include "tst_dbgridcolumns.moc"
