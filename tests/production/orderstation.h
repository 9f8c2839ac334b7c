// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/production/orders.h"
#include "tests/support/engines.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

#include <QApplication>
#include <QClipboard>
#include <QTabWidget>

/// A station at which orders are planned, on the engine of the test that is running.
class OrderStation : public TestStation
{
public:
    explicit OrderStation(const QString &engine = Engines::current())
        : TestStation(engine)
    {
    }

    MessageAnswers answers; ///< a box that nobody expects fails every test

    void insertOrder(const Orders::Order &order = {}) { Orders::insert(database, order); }
    /// Rolls of these weights (kg), numbered from 001.
    void writeOff(const QString &order, const QList<double> &rolls) { Orders::writeOff(database, order, rolls); }
    QStringList log() { return Orders::log(database); }

    void openOrders() { open(QStringLiteral("TfmMalhaOF")); }
    QTabWidget *pages() const { return child<QTabWidget>(QStringLiteral("PageControl")); }
    void showPage(const QString &name) { pages()->setCurrentWidget(child(name)); }
    QString page() const { return pages()->currentWidget()->objectName(); }
    bool isPageEnabled(const QString &name) const { return pages()->isTabEnabled(pages()->indexOf(child(name))); }
    /// By panel and bars, which must agree.
    bool isEditing() const
    {
        const bool panel = child(QStringLiteral("PainelDados"))->isEnabled();
        const bool mainBar = child(QStringLiteral("PainelBarra"))->isVisible();
        if (panel == mainBar || panel != child(QStringLiteral("PainelConfirma"))->isVisible())
            QTest::qFail("Panel and bars do not agree", __FILE__, __LINE__);
        return panel;
    }
    /// A new order with all that it needs: 100 kg of M0001 on machine 001; its number is proposed.
    void startOrder()
    {
        click(QStringLiteral("btnincluir"));
        enter(QStringLiteral("edtMaterial"), QStringLiteral("M0001"));
        enter(QStringLiteral("edtMaquina"), QStringLiteral("001"));
        enter(QStringLiteral("edtKGTotal"), QStringLiteral("100"));
    }
    /// What keys cannot type comes from the clipboard.
    void paste(const QString &field, const QString &text)
    {
        QApplication::clipboard()->setText(text);
        type(field, {});
        key(Qt::Key_V, Qt::ControlModifier);
    }
    /// Goes on as a user who has these rights on orders alone, such as "A0".
    void goOnWithRights(const QStringList &rights)
    {
        database.run(QStringLiteral("DELETE FROM QEN_DIREITO"));
        for (const QString &right : rights) {
            database.run(QStringLiteral("INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL) "
                                        "VALUES ('SEMDIREITO', 'TfmMalhaOF', '%1', '%2')")
                             .arg(right.left(1), right.mid(1)));
        }
        host.login(QStringLiteral("SEMDIREITO"), 1);
    }

    const QString caption = QStringLiteral("Ordem de Fabricação");
    const QString refusedByTable = QStringLiteral("O banco de dados recusou a operação. Nada foi gravado.");
    const QString refusedByConflict =
        QStringLiteral("Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente.");
};
