// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/demonstration.h"

#include "host/demonstrationscale.h"
#include "host/qenhost.h"
#include "host/reportdesk.h"
#include "host/screendriver.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/tabelas.h"

#include <QDir>

#include <cstdio>

using namespace Funcoes;
using namespace Qt::StringLiterals;

namespace {

void say(const QString &text)
{
    std::puts(qUtf8Printable(text));
    std::fflush(stdout);
}

QString value(const QString &statement)
{
    return Tabela->IBDatabase->value(DBLocal_SQL(statement)).toString();
}

class Demonstration
{
public:
    Demonstration(QenHost &host, const QString &folder)
        : m_host(host)
        , m_folder(folder)
        , m_scale(host.settings())
        , m_desk(folder)
    {
        m_host.setReportDesk(&m_desk);
    }
    ~Demonstration() { m_host.setReportDesk(nullptr); }
    Q_DISABLE_COPY_MOVE(Demonstration)

    void planOrder();
    void weighRoll();
    int tellWhatStands() const;

private:
    ScreenDriver open(const QString &screen) const
    {
        return ScreenDriver(m_host.loadForm(u"qenMalharia"_s, screen, false, true));
    }
    QString file(const QString &name) const
    {
        say(u"    imagem: %1/%2.png"_s.arg(m_folder, name));
        return u"%1/%2.png"_s.arg(m_folder, name);
    }

    QenHost &m_host;
    QString m_folder;
    DemonstrationScale m_scale;
    PictureDesk m_desk;
    QString m_of;
};

void Demonstration::planOrder()
{
    const QString fabric = value(u"SELECT MIN(CODIGO) FROM {MATERIAL} WHERE GRUPO = '150' AND CODCLI IS NOT NULL AND "
                                 "CODIGO IN (SELECT MATERIAL FROM {COMP_MATERIAL})"_s);
    ScreenDriver order = open(u"TfmMalhaOF"_s);
    const BoxAnswers answers;
    order.press(u"btnincluir"_s);
    m_of = order.text(u"edtOF"_s);
    say(u"Ordem de fabricação %1:"_s.arg(m_of));
    order.enter(u"edtCliente"_s, Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"CODCLI"_s, Aspas(fabric)));
    order.enter(u"edtMaterial"_s, fabric);
    order.enter(u"edtMaquina"_s, value(u"SELECT MIN(MAQUINA) FROM {MAQUINA}"_s));
    order.enter(u"edtKGTotal"_s, u"300"_s);
    order.enter(u"edtKGRolo"_s, u"20"_s);
    order.press(u"SbConfirmar"_s);
    say(u"    %1 para %2, 300,00 kg em rolos de 20,00 kg"_s.arg(
        order.text(u"edtDescMaterial"_s), order.text(u"edtDescCliente"_s)));
    order.save(file(u"1-ordem"_s));
    order.screen()->close();
}

void Demonstration::weighRoll()
{
    say(u"Baixa de um rolo com a balança simulada (%1 kg):"_s.arg(Format::number(m_scale.kg(), u"0.00"_s)));
    ScreenDriver station = open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"EdtTurno"_s, u"1"_s);
    station.enter(u"edtOF"_s, m_of);
    say(u"    peso lido da balança: %1"_s.arg(station.text(u"EdtPesoRolo"_s)));
    station.enter(u"EdtCodOper"_s, value(u"SELECT MIN(CODIGO) FROM {PESSOAL} WHERE ATIVO = 'S' AND TURNO = '1'"_s));
    station.save(file(u"2-rolo-na-balanca"_s));
    const BoxAnswers answers;
    station.press(u"btnBaixa"_s);
    for (const QString &text : answers.texts())
        say(u"    "_s + text + u" Sim"_s);
    station.enter(u"edtOF"_s, m_of);
    station.save(file(u"3-rolo-baixado"_s));
    // With nothing on the scale the label is that of the roll that was written off.
    station.enter(u"EdtPesoRolo"_s, u"0"_s);
    station.press(u"BtnImprimir"_s);
    for (const QString &printed : m_desk.files())
        say(u"    impresso: "_s + printed);
    station.screen()->close();
}

/// What the database holds of the roll now; 1 when something is missing.
int Demonstration::tellWhatStands() const
{
    const QString where = u" WHERE NUM_OF = "_s + Aspas(m_of);
    const QString number = value(u"SELECT MAX(NUM_BAIXA) FROM {OF_MALHA_BAIXAS}"_s + where);
    const QString written = value(u"SELECT SUM(QTDE) FROM {OF_MALHA_BAIXAS}"_s + where);
    const QString stock = value(u"SELECT SUM(QTDE_TOTAL) FROM {PA_MALHA}"_s + where);
    const QString log =
        value(u"SELECT MAX(TEXTO) FROM QEN_LOG WHERE ROTULO = 'BAIXA OF BARRA' AND CHAVE = "_s + Aspas(m_of));
    say(u"No banco de dados:"_s);
    say(u"    OF_MALHA_BAIXAS: baixa %1, %2 kg"_s.arg(number, Format::number(written.toDouble(), u"0.000"_s)));
    say(u"    PA_MALHA: %1 kg"_s.arg(Format::number(stock.toDouble(), u"0.000"_s)));
    say(u"    log: %1"_s.arg(log));
    const bool complete = number == u"001"_s && written.toDouble() > 0 && written == stock && !log.isEmpty();
    say(complete ? u"O rolo está gravado, no estoque e no log."_s : u"A baixa não ficou completa."_s);
    return complete ? 0 : 1;
}

} // namespace

int runDemonstration(QenHost &host, const QString &folder)
{
    if (!QDir().mkpath(folder))
        throw EQen(u"A pasta \"%1\" não pode ser criada."_s.arg(folder));
    Demonstration demonstration(host, folder);
    demonstration.planOrder();
    demonstration.weighRoll();
    return demonstration.tellWhatStands();
}
