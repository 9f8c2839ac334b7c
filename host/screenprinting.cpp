// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/screenprinting.h"

#include "host/screendriver.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/tabelas.h"

#include <QAction>
#include <QTabWidget>

using namespace Funcoes;
using namespace Qt::StringLiterals;

namespace {

QString value(const QString &statement)
{
    return Tabela->IBDatabase->value(DBLocal_SQL(statement)).toString();
}

void printReport(ScreenDriver &report)
{
    report.press(u"BtnImprimir"_s);
}

void printPriceList(ScreenDriver &prices)
{
    prices.press(u"ImprimiRepresen"_s);
}

/// The sheet of the order that was being altered, and the list of all.
void printOrder(ScreenDriver &order)
{
    order.press(u"SbDesistir"_s);
    order.press(u"BtnImprimir"_s);
    auto *pages = order.screen()->findChild<QTabWidget *>(u"PageControl"_s);
    pages->setCurrentWidget(order.screen()->findChild<QWidget *>(u"TabConsulta"_s));
    order.press(u"BitBtn4"_s);
}

/// The sheet on both kinds of printers.
void printSheets(ScreenDriver &sheets)
{
    for (const QString &printer : {u"rbMatricial"_s, u"rbJatoTinta"_s}) {
        sheets.press(printer);
        sheets.press(u"BtnImprimir"_s);
    }
}

/// The label of the roll on the scale, for both kinds of printers.
void printLabels(ScreenDriver &station)
{
    for (const QString &printer : {u"RgTexto"_s, u"RgGrafico"_s}) {
        station.press(printer);
        station.press(u"BtnImprimir"_s);
    }
}

void printDeskLabel(ScreenDriver &desk)
{
    if (auto *label = desk.screen()->findChild<QAction *>(u"Imprimir1"_s))
        label->trigger();
}

void printRaport(ScreenDriver &raport)
{
    raport.press(u"BitBtn5"_s);
}

/// A release of several orders whose yarn is known.
void printRelease(ScreenDriver &release)
{
    release.enter(u"EdtNumero"_s, value(uR"(
        SELECT P3.NUMERO FROM {PEDIDO3} P3 INNER JOIN {BAIXA_FIO} B ON (B.NUMERO = P3.CAIXA) WHERE P3.QTDE > 0
        GROUP BY P3.NUMERO ORDER BY COUNT(DISTINCT P3.CAIXA) DESC, P3.NUMERO FETCH FIRST 1 ROWS ONLY)"_s));
    release.press(u"BitBtn2"_s);
}

} // namespace

void printInUse(QWidget &screen)
{
    static const QHash<QString, void (*)(ScreenDriver &)> printings{{u"TfmMalhaOF"_s, printOrder},
        {u"TfmMalhaOFBaixaBarra"_s, printLabels}, {u"TfmMalhaOFBaixa"_s, printDeskLabel},
        {u"TfmCadRaport"_s, printRaport}, {u"TfmMalLibFat"_s, printRelease}, {u"TfmRelOrdFab"_s, printSheets},
        {u"TfmRelPend"_s, printReport}, {u"TfmRelDocto"_s, printReport}, {u"TfmRelMalSaidas"_s, printReport},
        {u"TfmRelEstoqueMat"_s, printReport}, {u"TfmRelProd"_s, printReport}, {u"TfmRelRegistros"_s, printReport},
        {u"TfmRelMatTabPre"_s, printPriceList}};
    const auto print = printings.constFind(QString::fromLatin1(screen.metaObject()->className()));
    if (print == printings.constEnd())
        return;
    try {
        ScreenDriver driver(&screen);
        (*print)(driver);
    } catch (const EProgramming &) {
        // A button stayed closed.
    }
}
