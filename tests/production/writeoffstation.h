// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/simulatedscale.h"
#include "module/host_services/comport.h"
#include "tests/support/messageanswers.h"
#include "tests/support/teststation.h"

/// A write-off station with a scale, and one order "000012" of 100 kg in rolls of 20 kg of the fabric M0001.
class WriteOffStation : public TestStation
{
public:
    explicit WriteOffStation(const QString &engine, const QString &user = QStringLiteral("ADMIN"))
        : TestStation(engine, user)
    {
        usePort(scale.portName());
        addOrder(QStringLiteral("000012"), 100);
    }

    SimulatedScale scale;

    void usePort(const QString &name)
    {
        ComPortSettings settings;
        settings.port = name;
        settings.waitMs = 250;
        TCustomComPort port;
        port.SetSettings(settings);
        port.StoreSettings(host.settings(), scaleSettingsKey);
    }

    void addOrder(const QString &number, double kg)
    {
        database.run(QStringLiteral("INSERT INTO {OF_MALHA} (NUM_OF, DATA, CLIENTE, MATERIAL, MAQUINA, LOTE, KG_ROLO,"
                                    " KG_TOTAL) VALUES ('%1', '03/02/2026', '00001', 'M0001', '001', 'L7', 20, %2)")
                         .arg(number, QString::number(kg, 'f', 3)));
    }

    void addRoll(const QString &of, const QString &number, double kg)
    {
        database.run(QStringLiteral("INSERT INTO {OF_MALHA_BAIXAS} (NUM_BAIXA, NUM_OF, DATA, HORA, TURNO, FUNCIONARIO,"
                                    " QTDE) VALUES ('%1', '%2', '03/09/2026', '08:15:00', '1', '000101', %3)")
                         .arg(number, of, QString::number(kg, 'f', 3)));
    }

    void setParameter(int number, const QString &value)
    {
        database.run(QStringLiteral("UPDATE QEN_PARAMETRO SET VALOR = '%1' WHERE MODULO = 'MAL' AND NUMERO = %2"
                                    " AND EMPRESA = 1")
                         .arg(value)
                         .arg(number));
    }

    /// The station's screen with shift, order, operator and weight as they are typed before a confirmation.
    void prepareRoll(const QString &weight, const QString &shift = QStringLiteral("1"))
    {
        if (!form())
            open(QStringLiteral("TfmMalhaOFBaixaBarra"));
        enter(QStringLiteral("EdtTurno"), shift);
        enter(QStringLiteral("edtOF"), QStringLiteral("000012"));
        enter(QStringLiteral("EdtCodOper"), QStringLiteral("000101"));
        enter(QStringLiteral("EdtPesoRolo"), weight);
    }

    /// Confirms the roll that was prepared and answers its question with Yes.
    void confirmRoll(const QString &shownWeight)
    {
        MessageAnswers answers;
        answers.expect(QStringLiteral("Peso da Baixa %1?").arg(shownWeight), QMessageBox::Yes);
        click(QStringLiteral("btnBaixa"));
    }

    QStringList rolls()
    {
        return database.rows(QStringLiteral("SELECT NUM_BAIXA, DATA, HORA, TURNO, FUNCIONARIO, QTDE"
                                            " FROM {OF_MALHA_BAIXAS} WHERE NUM_OF = '000012' ORDER BY NUM_BAIXA"));
    }
    QStringList log()
    {
        return database.rows(QStringLiteral("SELECT ROTULO, TEXTO, OPERACAO, USUARIO FROM QEN_LOG ORDER BY MOMENTO"));
    }
    QStringList stock()
    {
        return database.rows(QStringLiteral("SELECT CODIGO, NUM_OF, QTDE_TOTAL, FATURADO FROM {PA_MALHA}"));
    }
};
