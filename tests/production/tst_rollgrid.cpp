// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/datasetmodel.h"
#include "module/controls/dbgrid.h"
#include "module/controls/gridtotals.h"
#include "tests/production/writeoffstation.h"
#include "tests/support/engines.h"

#include <QHeaderView>
#include <QTest>

using namespace Qt::StringLiterals;

/// The rolls of an order as the station lists them: sorted, summed up, with the columns as they were left.
class TestRollGrid : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup() { m.reset(); }

    void theWeightsAreSummedUp();
    void theRollUndoneIsTheOneThatIsShown();
    void aNewRollComesWhereItBelongs();
    void columnsAreAsTheyWereLeft();
    void theDesksOwnTitleClickSorts();

private:
    void open(const QString &screen = u"TfmMalhaOFBaixaBarra"_s);
    TDBGrid *grid() const { return m->child<TDBGrid>(u"DBGrid"_s); }
    QStringList shown(const QString &field) const;
    void clickTitle(const QString &field) const;
    QString total() const { return grid()->findChild<GridTotals *>()->text(u"QTDE"_s); }

    std::unique_ptr<WriteOffStation> m;
};

void TestRollGrid::init()
{
    m = std::make_unique<WriteOffStation>(Engines::current());
    m->addRoll(u"000012"_s, u"001"_s, 20.505);
    m->addRoll(u"000012"_s, u"002"_s, 9.25);
    m->addRoll(u"000012"_s, u"003"_s, 19);
}

void TestRollGrid::open(const QString &screen)
{
    m->open(screen);
    m->enter(u"edtOF"_s, u"000012"_s);
    QCOMPARE(grid()->rows()->rowCount(), 3);
}

QStringList TestRollGrid::shown(const QString &field) const
{
    QStringList texts;
    for (int row = 0; row < grid()->rows()->rowCount(); ++row)
        texts.append(grid()->rows()->index(row, grid()->columnOf(field)).data().toString());
    return texts;
}

void TestRollGrid::clickTitle(const QString &field) const
{
    const QHeaderView *header = grid()->horizontalHeader();
    const int column = grid()->columnOf(field);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
        QPoint(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2));
}

void TestRollGrid::theWeightsAreSummedUp()
{
    open();
    QCOMPARE(total(), u"48,755"_s);
    QCOMPARE(grid()->findChild<GridTotals *>()->count(), u"3 registros"_s);
    m->prepareRoll(u"10"_s);
    m->confirmRoll(u"10,00"_s);
    QCOMPARE(total(), u"58,755"_s);
}

void TestRollGrid::theRollUndoneIsTheOneThatIsShown()
{
    open();
    clickTitle(u"QTDE"_s);
    QCOMPARE(shown(u"NUM_BAIXA"_s), (QStringList{u"002"_s, u"003"_s, u"001"_s}));
    grid()->setFocus();
    m->key(Qt::Key_Home, Qt::ControlModifier);
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    m->click(u"BtExcluir"_s);
    QCOMPARE(m->database.rows(u"SELECT NUM_BAIXA FROM {OF_MALHA_BAIXAS} ORDER BY NUM_BAIXA"_s),
        (QStringList{u"001"_s, u"003"_s}));
    QCOMPARE(shown(u"NUM_BAIXA"_s), (QStringList{u"003"_s, u"001"_s}));
    QCOMPARE(total(), u"39,505"_s);
}

void TestRollGrid::aNewRollComesWhereItBelongs()
{
    open();
    clickTitle(u"QTDE"_s);
    m->prepareRoll(u"12"_s);
    m->confirmRoll(u"12,00"_s);
    QCOMPARE(shown(u"NUM_BAIXA"_s), (QStringList{u"002"_s, u"004"_s, u"003"_s, u"001"_s}));
}

void TestRollGrid::columnsAreAsTheyWereLeft()
{
    open();
    QHeaderView *header = grid()->horizontalHeader();
    header->resizeSection(grid()->columnOf(u"DESCRICAO"_s), 222);
    header->moveSection(header->visualIndex(grid()->columnOf(u"QTDE"_s)), 0);
    m->closeForm();
    open();
    header = grid()->horizontalHeader();
    QCOMPARE(header->sectionSize(grid()->columnOf(u"DESCRICAO"_s)), 222);
    QCOMPARE(header->visualIndex(grid()->columnOf(u"QTDE"_s)), 0);
    QCOMPARE(total(), u"48,755"_s);
}

void TestRollGrid::theDesksOwnTitleClickSorts()
{
    open(u"TfmMalhaOFBaixa"_s);
    clickTitle(u"QTDE"_s);
    QCOMPARE(shown(u"NUM_BAIXA"_s), (QStringList{u"002"_s, u"003"_s, u"001"_s}));
    clickTitle(u"QTDE"_s);
    QCOMPARE(shown(u"NUM_BAIXA"_s), (QStringList{u"001"_s, u"003"_s, u"002"_s}));
    QVERIFY(grid()->horizontalHeader()->isSortIndicatorShown());
}

QTEST_MAIN(TestRollGrid)
#include "tst_rollgrid.moc"
