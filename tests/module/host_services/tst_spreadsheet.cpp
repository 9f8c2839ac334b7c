// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/clientdataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/spreadsheet.h"
#include "tests/support/sheetreader.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

enum Field { Lote, Kg, Rolos, Dia, Hora, Momento, Baixa };

/// Rows that are fetched one by one.
class Fetched : public TClientDataSet
{
public:
    bool canFetchMore() const override { return left > 0; }
    void fetchMore() override
    {
        --left;
        Append();
        setValue(u"LOTE"_s, u"fetched"_s);
        Post();
    }
    int left = 0;
};

} // namespace

/// Rows written for spreadsheet programs and read back.
class TestSpreadsheet : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void figuresAreNumbersWithTheFormatsOfTheirMasks();
    void masksBecomeFormats_data();
    void masksBecomeFormats();
    void daysAndTimesAreTyped();
    void nullIsAnEmptyCell();
    void titlesAreBoldStayInSightAndFilter();
    void columnsAreAsWideAsTheirTexts();
    void textsAreNeverFormulas();
    void textsKeepWhatSuchAFileCanHold();
    void sheetNamesAreMadeGood_data();
    void sheetNamesAreMadeGood();
    void aSheetOfNoRowsHasItsTitles();
    void chosenRowsComeInTheirOrder();

    void csvHasMarkSemicolonsAndCommas();
    void csvTextsAreQuotedWhereTheyMustBe();
    void csvTextsThatWouldBeFormulasAreMadeHarmless();
    void csvFiguresAreWrittenInFull();

    void whatIsNotFetchedYetIsFetched();
    void cursorAndEditStayAsTheyAre();
    void aFileThatCannotBeWrittenIsSaid();
    void theFileBeforeStaysWhenNothingIsWritten();
    void givingUpLeavesNoFile();
    void progressIsTold();

private:
    void add(const QHash<QString, QVariant> &values);
    QVector<Spreadsheet::Column> columns(const QVector<int> &fields) const;
    SheetReader xlsx(const QVector<int> &fields, const QString &title = u"Lotes"_s);
    QStringList csv(const QVector<int> &fields);
    QString file(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Fetched> m_rows;
};

void TestSpreadsheet::init()
{
    using Type = TField::Type;
    m_folder = std::make_unique<QTemporaryDir>();
    m_rows = std::make_unique<Fetched>();
    m_rows->CreateDataSet({TField(u"LOTE"_s, Type::Text).titled(u"Lote"_s),
        TField(u"KG"_s, Type::Float).titled(u"Peso (kg)"_s).shownAs(u",0.00"_s),
        TField(u"ROLOS"_s, Type::Integer).titled(u"Rolos"_s), TField(u"DIA"_s, Type::Date).titled(u"Data"_s),
        TField(u"HORA"_s, Type::Time).titled(u"Hora"_s), TField(u"MOMENTO"_s, Type::DateTime).titled(u"Momento"_s),
        TField(u"BAIXA"_s, Type::Text, 1).titled(u"Baixa"_s).asTick()});
}

void TestSpreadsheet::cleanup()
{
    m_rows.reset();
    m_folder.reset();
}

void TestSpreadsheet::add(const QHash<QString, QVariant> &values)
{
    m_rows->Append();
    for (auto it = values.begin(); it != values.end(); ++it)
        m_rows->setValue(it.key(), it.value());
    m_rows->Post();
}

QVector<Spreadsheet::Column> TestSpreadsheet::columns(const QVector<int> &fields) const
{
    QVector<Spreadsheet::Column> columns;
    for (const int field : fields)
        columns.append({field, m_rows->fields()[field].title});
    return columns;
}

SheetReader TestSpreadsheet::xlsx(const QVector<int> &fields, const QString &title)
{
    Spreadsheet::writeXlsx(*m_rows, columns(fields), title, file(u"a.xlsx"_s));
    return SheetReader(file(u"a.xlsx"_s));
}

/// The lines of the file after its mark.
QStringList TestSpreadsheet::csv(const QVector<int> &fields)
{
    Spreadsheet::writeCsv(*m_rows, columns(fields), file(u"a.csv"_s));
    QFile written(file(u"a.csv"_s));
    if (!written.open(QIODevice::ReadOnly) || written.read(3) != "\xEF\xBB\xBF")
        return {};
    return QString::fromUtf8(written.readAll()).split(u"\r\n"_s);
}

void TestSpreadsheet::figuresAreNumbersWithTheFormatsOfTheirMasks()
{
    add({{u"KG"_s, 1234.567}, {u"ROLOS"_s, 61}});
    const SheetReader sheet = xlsx({Kg, Rolos});
    QVERIFY(sheet.isReadable());
    QCOMPARE(sheet.cell(u"A2"_s).type, u"n"_s);
    QCOMPARE(sheet.cell(u"A2"_s).value.toDouble(), 1234.567); // in full, though two decimals are shown
    QCOMPARE(sheet.cell(u"A2"_s).format, u"#,##0.00"_s);
    QCOMPARE(sheet.cell(u"B2"_s).value, u"61"_s);
    QCOMPARE(sheet.cell(u"B2"_s).format, u"0"_s);
}

void TestSpreadsheet::masksBecomeFormats_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("format");
    QTest::newRow("none") << u""_s << u"#,##0.00"_s;
    QTest::newRow("kilograms") << u",0.000"_s << u"#,##0.000"_s;
    QTest::newRow("not grouped") << u"0.00"_s << u"0.00"_s;
    QTest::newRow("whole") << u",0"_s << u"#,##0"_s;
    QTest::newRow("digits") << u"0000"_s << u"0000"_s;
    QTest::newRow("many grouped digits") << u",000000"_s << u"000,000"_s;
    QTest::newRow("decimals when there are any") << u",0.0##"_s << u"#,##0.0##"_s;
    QTest::newRow("no digit before the point") << u".00"_s << u"#.00"_s;
}

void TestSpreadsheet::masksBecomeFormats()
{
    QFETCH(QString, mask);
    m_rows->field(u"KG"_s).mask = mask;
    add({{u"KG"_s, 1.5}});
    QTEST(xlsx({Kg}).cell(u"A2"_s).format, "format");
}

void TestSpreadsheet::daysAndTimesAreTyped()
{
    add({{u"DIA"_s, QDate(2026, 12, 31)}, {u"HORA"_s, QTime(18, 0)},
        {u"MOMENTO"_s, QDateTime(QDate(2026, 12, 31), QTime(6, 0))}});
    add({{u"DIA"_s, QDate(1899, 12, 31)}});
    const SheetReader sheet = xlsx({Dia, Hora, Momento});
    QCOMPARE(sheet.cell(u"A2"_s).value.toDouble(), 46387.0); // days as spreadsheet programs count them
    QCOMPARE(sheet.cell(u"A2"_s).format, u"dd/mm/yyyy"_s);
    QCOMPARE(sheet.cell(u"B2"_s).value.toDouble(), 0.75);
    QCOMPARE(sheet.cell(u"B2"_s).format, u"hh:mm:ss"_s);
    QCOMPARE(sheet.cell(u"C2"_s).value.toDouble(), 46387.25);
    QCOMPARE(sheet.cell(u"C2"_s).format, u"dd/mm/yyyy hh:mm:ss"_s);
    QCOMPARE(sheet.cell(u"A3"_s).value, u"31/12/1899"_s); // before their calendar begins
}

void TestSpreadsheet::nullIsAnEmptyCell()
{
    add({});
    const SheetReader sheet = xlsx({Lote, Kg, Rolos, Dia, Hora, Momento, Baixa});
    QCOMPARE(sheet.cellCount(), 8); // the titles, and the tick that is not set
    QCOMPARE(sheet.cell(u"G2"_s).value, u"Não"_s);
    QCOMPARE(csv({Lote, Kg, Baixa}).at(1), u";;Não"_s);
}

void TestSpreadsheet::titlesAreBoldStayInSightAndFilter()
{
    add({{u"LOTE"_s, u"A1"_s}});
    add({{u"LOTE"_s, u"A2"_s}});
    const SheetReader sheet = xlsx({Lote, Kg});
    QCOMPARE(sheet.cell(u"A1"_s).value, u"Lote"_s);
    QCOMPARE(sheet.cell(u"B1"_s).value, u"Peso (kg)"_s);
    QVERIFY(sheet.cell(u"A1"_s).bold);
    QVERIFY(!sheet.cell(u"A2"_s).bold);
    QCOMPARE(sheet.frozen(), u"A2"_s);
    QCOMPARE(sheet.filtered(), u"A1:B3"_s);
    QCOMPARE(sheet.name(), u"Lotes"_s);
}

void TestSpreadsheet::columnsAreAsWideAsTheirTexts()
{
    add({{u"LOTE"_s, u"a text of thirty characters..."_s}, {u"KG"_s, 1.0}});
    add({{u"LOTE"_s, QString(500, u'x')}});
    SheetReader sheet = xlsx({Lote, Kg});
    QVERIFY(sheet.width(2) >= 12 && sheet.width(2) < 15); // its title with the filter's arrow
    QVERIFY(sheet.width(1) >= 60 && sheet.width(1) < 62);
    m_rows->Delete();
    sheet = xlsx({Lote});
    QVERIFY(sheet.width(1) >= 31 && sheet.width(1) < 33);
}

void TestSpreadsheet::textsAreNeverFormulas()
{
    for (const QString &text : {u"=1+1"_s, u"+55 11"_s, u"-5"_s, u"@A1"_s, u"00123"_s})
        add({{u"LOTE"_s, text}});
    const SheetReader sheet = xlsx({Lote});
    QCOMPARE(sheet.cell(u"A2"_s).value, u"=1+1"_s);
    QCOMPARE(sheet.cell(u"A3"_s).value, u"+55 11"_s);
    QCOMPARE(sheet.cell(u"A6"_s).value, u"00123"_s);
    for (int row = 2; row <= 6; ++row)
        QCOMPARE(sheet.cell(u"A%1"_s.arg(row)).type, u"inlineStr"_s);
}

void TestSpreadsheet::textsKeepWhatSuchAFileCanHold()
{
    add({{u"LOTE"_s, u"ação <b> & \"c\"\tΩ €\nsegunda"_s}});
    add({{u"LOTE"_s, QString(u"a\u0001b\u0000c"_s)}});
    add({{u"LOTE"_s, QString(40000, u'x')}});
    const SheetReader sheet = xlsx({Lote});
    QVERIFY(sheet.isReadable());
    QCOMPARE(sheet.cell(u"A2"_s).value, u"ação <b> & \"c\"\tΩ €\nsegunda"_s);
    QCOMPARE(sheet.cell(u"A3"_s).value, u"abc"_s);
    QCOMPARE(sheet.cell(u"A4"_s).value.size(), 32767);
}

void TestSpreadsheet::sheetNamesAreMadeGood_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << u"Baixa de OF"_s << u"Baixa de OF"_s;
    QTest::newRow("signs") << u"Fio/Malha: [2026]*?"_s << u"Fio Malha 2026"_s;
    QTest::newRow("long") << u"Relatório de Ordens de Fabricação"_s << u"Relatório de Ordens de Fabricaç"_s;
    QTest::newRow("apostrophes") << u"'a'b'"_s << u"a'b"_s;
    QTest::newRow("empty") << u""_s << u"Planilha"_s;
}

void TestSpreadsheet::sheetNamesAreMadeGood()
{
    QFETCH(QString, title);
    QTEST(xlsx({Lote}, title).name(), "name");
}

void TestSpreadsheet::aSheetOfNoRowsHasItsTitles()
{
    const SheetReader sheet = xlsx({Lote, Kg});
    QVERIFY(sheet.isReadable());
    QCOMPARE(sheet.cellCount(), 2);
    QCOMPARE(csv({Lote, Kg}), (QStringList{u"Lote;Peso (kg)"_s, u""_s}));
}

void TestSpreadsheet::chosenRowsComeInTheirOrder()
{
    for (const QString &lot : {u"A"_s, u"B"_s, u"C"_s})
        add({{u"LOTE"_s, lot}});
    QVERIFY(Spreadsheet::writeXlsx(*m_rows, columns({Lote}), u"Lotes"_s, file(u"a.xlsx"_s), {}, {2, 0}));
    const SheetReader sheet(file(u"a.xlsx"_s));
    QCOMPARE(sheet.cell(u"A2"_s).value, u"C"_s);
    QCOMPARE(sheet.cell(u"A3"_s).value, u"A"_s);
    QCOMPARE(sheet.cellCount(), 3);
}

void TestSpreadsheet::csvHasMarkSemicolonsAndCommas()
{
    add({{u"LOTE"_s, u"Lã 1"_s}, {u"KG"_s, 1234.5}, {u"ROLOS"_s, 1234}, {u"DIA"_s, QDate(2026, 12, 31)},
        {u"HORA"_s, QTime(18, 0)}, {u"BAIXA"_s, u"S"_s}});
    QCOMPARE(csv({Lote, Kg, Rolos, Dia, Hora, Baixa}),
        (QStringList{
            u"Lote;Peso (kg);Rolos;Data;Hora;Baixa"_s, u"Lã 1;1234,50;1234;31/12/2026;18:00:00;Sim"_s, u""_s}));
}

void TestSpreadsheet::csvTextsAreQuotedWhereTheyMustBe()
{
    for (const QString &text : {u"a;b"_s, u"a\"b"_s, u"a\nb"_s, u" a"_s, u"a,b"_s})
        add({{u"LOTE"_s, text}});
    QCOMPARE(
        csv({Lote}).mid(1), (QStringList{u"\"a;b\""_s, u"\"a\"\"b\""_s, u"\"a\nb\""_s, u"\" a\""_s, u"a,b"_s, u""_s}));
}

void TestSpreadsheet::csvTextsThatWouldBeFormulasAreMadeHarmless()
{
    for (const QString &text : {u"=1+1"_s, u"+55"_s, u"-5"_s, u"@A1"_s, u"\t=1"_s, u"a=1"_s, u"=\"a\";1"_s})
        add({{u"LOTE"_s, text}, {u"KG"_s, -5.0}});
    QCOMPARE(csv({Lote, Kg}).mid(1),
        (QStringList{u"'=1+1;-5,00"_s, u"'+55;-5,00"_s, u"'-5;-5,00"_s, u"'@A1;-5,00"_s, u"'\t=1;-5,00"_s,
            u"a=1;-5,00"_s, u"\"'=\"\"a\"\";1\";-5,00"_s, u""_s}));
}

void TestSpreadsheet::csvFiguresAreWrittenInFull()
{
    add({{u"KG"_s, 20.505}});
    add({{u"KG"_s, 0.1 + 0.2}});
    add({{u"KG"_s, std::numeric_limits<double>::infinity()}});
    QCOMPARE(csv({Kg}).mid(1), (QStringList{u"20,505"_s, u"0,30"_s, u""_s, u""_s}));
    m_rows->field(u"ROLOS"_s).mask = u"000"_s;
    add({{u"ROLOS"_s, 7}});
    QCOMPARE(csv({Rolos}).at(4), u"007"_s);
}

void TestSpreadsheet::whatIsNotFetchedYetIsFetched()
{
    add({{u"LOTE"_s, u"A"_s}});
    m_rows->left = 2;
    QCOMPARE(csv({Lote}).mid(1), (QStringList{u"A"_s, u"fetched"_s, u"fetched"_s, u""_s}));
    m_rows->left = 1;
    QCOMPARE(xlsx({Lote}).cell(u"A5"_s).value, u"fetched"_s);
}

void TestSpreadsheet::cursorAndEditStayAsTheyAre()
{
    for (const QString &lot : {u"A"_s, u"B"_s, u"C"_s})
        add({{u"LOTE"_s, lot}});
    m_rows->setRow(1);
    m_rows->Edit();
    m_rows->setValue(u"LOTE"_s, u"typed"_s);
    QCOMPARE(csv({Lote}).at(2), u"B"_s);
    QCOMPARE(xlsx({Lote}).cell(u"A3"_s).value, u"B"_s);
    QCOMPARE(m_rows->row(), 1);
    QCOMPARE(m_rows->state(), TClientDataSet::State::Edit);
    QCOMPARE(m_rows->AsString(u"LOTE"_s), u"typed"_s);
}

void TestSpreadsheet::aFileThatCannotBeWrittenIsSaid()
{
    const auto sentenceOf = [&](const std::function<void(const QString &)> &write) {
        try {
            write(file(u"none/a.xlsx"_s));
        } catch (const EQen &error) {
            return error.sentence();
        }
        return QString();
    };
    const QString sentence = u"O arquivo \"%1\" não pode ser gravado. Verifique se ele está aberto em outro programa e "
                             "se a pasta aceita gravação."_s.arg(file(u"none/a.xlsx"_s));
    QCOMPARE(sentenceOf([&](const QString &name) { Spreadsheet::writeCsv(*m_rows, columns({Lote}), name); }), sentence);
    QCOMPARE(sentenceOf([&](const QString &name) { Spreadsheet::writeXlsx(*m_rows, columns({Lote}), u"a"_s, name); }),
        sentence);
}

void TestSpreadsheet::theFileBeforeStaysWhenNothingIsWritten()
{
    add({{u"LOTE"_s, u"A"_s}});
    csv({Lote});
    const auto giveUp = [](int) { return false; };
    QVERIFY(!Spreadsheet::writeCsv(*m_rows, columns({Lote}), file(u"a.csv"_s), giveUp));
    QVERIFY(!Spreadsheet::writeXlsx(*m_rows, columns({Lote}), u"a"_s, file(u"a.csv"_s), giveUp));
    QFile before(file(u"a.csv"_s));
    QVERIFY(before.open(QIODevice::ReadOnly));
    QVERIFY(before.readAll().contains("Lote\r\nA\r\n"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.csv"_s});
}

void TestSpreadsheet::givingUpLeavesNoFile()
{
    m_rows->left = 1200;
    const auto later = [](int written) { return written < 1000; };
    QVERIFY(!Spreadsheet::writeXlsx(*m_rows, columns({Lote}), u"a"_s, file(u"a.xlsx"_s), later));
    QVERIFY(!Spreadsheet::writeCsv(*m_rows, columns({Lote}), file(u"a.csv"_s), later));
    QVERIFY(QDir(m_folder->path()).isEmpty(QDir::Files | QDir::Hidden));
}

void TestSpreadsheet::progressIsTold()
{
    m_rows->left = 1200;
    QList<int> told;
    const auto remember = [&](int written) {
        told.append(written);
        return true;
    };
    QVERIFY(Spreadsheet::writeCsv(*m_rows, columns({Lote}), file(u"a.csv"_s), remember));
    QCOMPARE(told, (QList<int>{0, 500, 1000}));
}

QTEST_GUILESS_MAIN(TestSpreadsheet)
#include "tst_spreadsheet.moc"
