// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_relprod.h"

#include "reports/relprod.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/package.h"
#include "module/reportfilters.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;
using namespace ReportFilters;

QPointer<TfmRelProd> fmRelProd;

Unit &Relprod::unit()
{
    static Unit unit = Unit::of<TfmRelProd>(u"Relatório de OFs Produzidas"_s);
    return unit;
}

/// What "Agrupar" chooses. Names stand behind their codes in the order, because companies may share a code.
struct TfmRelProd::Grouping
{
    QString name;
    QString order;
    QString layout;
    QString columns; ///< of the grid, before its figures
};

namespace {

const QTime dayBegin(0, 0, 0);
const QTime dayEnd(23, 59, 59);

/// Blanks are zeros, "8" is eight o'clock; a field without any digit is the time given. Null: no time of day.
std::optional<QTime> timeIn(const QLineEdit *field, QTime whenEmpty)
{
    const QStringList parts = field->text().split(u':');
    if (parts.join(QString()).trimmed().isEmpty())
        return whenEmpty;
    const QTime time(parts.value(0).toInt(), parts.value(1).toInt(), parts.value(2).toInt());
    return time.isValid() ? std::optional(time) : std::nullopt;
}

/// The price column that a payment term picks, "7" and "07" alike; the first when none was typed. Null: no column.
std::optional<QString> priceColumn(const QString &term)
{
    constexpr int days = 7; // from one instalment to the next
    constexpr int lastTerm = 91;
    bool isNumber = true;
    const int number = term.trimmed().isEmpty() ? 0 : term.trimmed().toInt(&isNumber);
    if (!isNumber || number < 0 || number > lastTerm || number % days != 0)
        return std::nullopt;
    return u"PRECO_"_s + QString::number(number).rightJustified(2, u'0');
}

QString moment(QDate date, QTime time)
{
    return u"CAST(%1 AS TIMESTAMP)"_s.arg(Aspas(Format::sqlDate(date) + u' ' + Format::time(time)));
}

/// Working days from one date to the other, both included.
int workingDaysWithin(QDate from, QDate to)
{
    int count = 0;
    for (QDate day = DiaUtil(from, 0); day.isValid() && day <= to; day = DiaUtil(day, 1))
        ++count;
    return count;
}

QVariant orNull(const std::optional<double> &number)
{
    return number ? QVariant(*number) : QVariant();
}

} // namespace

TfmRelProd::TfmRelProd()
    : m_ui(std::make_unique<Ui::fmRelProd>())
    , tbProducao(new TClientDataSet(this))
{
    fmRelProd = this;
}

TfmRelProd::~TfmRelProd() = default;

void TfmRelProd::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    AbreTabelas({u"TbEntidade"_s});
    Cria_Tabela();
    m_ui->DBGrid1->setDataSet(tbProducao);
    showColumns();
    m_ui->Divisor->setSizes({800, 280});
    m_ui->Divisor->setStretchFactor(0, 1);
    setLastMonth(m_ui->EdtDataIni, m_ui->EdtDataFim);
    m_ui->EdtHoraIni->setText(Format::time(dayBegin));
    m_ui->EdtHoraFim->setText(Format::time(dayEnd));
    for (QAbstractButton *choice : m_ui->rgAgrupar->findChildren<QAbstractButton *>()) {
        connect(choice, &QAbstractButton::toggled, this, [this](bool on) {
            if (on)
                regroup();
        });
    }
    connect(m_ui->ckContarDiasUteis, &QAbstractButton::toggled, this, &TfmRelProd::regroup);
    connect(m_ui->CheckBox1, &QAbstractButton::toggled, this, &TfmRelProd::showColumns);
}

void TfmRelProd::Cria_Tabela()
{
    using Type = TField::Type;
    const auto text = [](const QString &name) { return TField(name, Type::Text); };
    QVector<TField> fields{text(u"Maquina"_s), text(u"Desc_Maq"_s), text(u"Material"_s), text(u"Opcao"_s),
        TField(u"Dt_Baixa"_s, Type::Date), text(u"Dt_ini"_s), text(u"dt_Fim"_s),
        TField(u"Dias_uteis"_s, Type::Integer)};
    for (int shift = 1; shift <= ProductionPivot::shiftCount; ++shift)
        fields.append(kilograms(u"Turno%1"_s.arg(shift)));
    for (int shift = 1; shift <= ProductionPivot::shiftCount; ++shift)
        fields.append(TField(u"Valor%1"_s.arg(shift), Type::Float).shownAs(u",0.00"_s));
    fields += {text(u"Cod_Cliente"_s), text(u"Cliente"_s), text(u"Desc_Mat"_s), kilograms(u"Total"_s),
        TField(u"Valor_Total"_s, Type::Float).shownAs(u",0.00"_s)};
    tbProducao->setObjectName(u"tbProducao"_s);
    tbProducao->CreateDataSet(fields);
}

void TfmRelProd::EdtCodCliExit()
{
    checkCode(m_ui->PqCliente, u"Cliente inválido."_s);
}

void TfmRelProd::EdtCodMatExit()
{
    checkCode(m_ui->PqMaterial, u"Material inválido."_s);
}

void TfmRelProd::EdtCodTabExit()
{
    checkCode(m_ui->PqTabela, u"Tabela inválida."_s);
}

void TfmRelProd::Edit1Exit()
{
    if (!priceColumn(m_ui->Edit1->text()))
        refuse(u"Prazo inválido."_s, m_ui->Edit1);
}

void TfmRelProd::EdtHoraIniExit()
{
    completeTime(m_ui->EdtHoraIni);
}

void TfmRelProd::EdtHoraFimExit()
{
    completeTime(m_ui->EdtHoraFim);
}

void TfmRelProd::completeTime(QLineEdit *field)
{
    const std::optional<QTime> time = timeIn(field, {});
    if (time)
        field->setText(Format::time(*time));
    else
        refuse(u"Hora inválida."_s, field);
}

void TfmRelProd::checkFilters()
{
    const auto require = [this](bool holds, const QString &message, QWidget *atFault) {
        if (holds)
            return;
        refuse(message, atFault);
        throw EAbort();
    };
    require(timeIn(m_ui->EdtHoraIni, dayBegin).has_value(), u"Hora inválida."_s, m_ui->EdtHoraIni);
    require(timeIn(m_ui->EdtHoraFim, dayEnd).has_value(), u"Hora inválida."_s, m_ui->EdtHoraFim);
    require(priceColumn(m_ui->Edit1->text()).has_value(), u"Prazo inválido."_s, m_ui->Edit1);
}

/// From date and time to date and time, both included. A roll without a time counts at either end.
QString TfmRelProd::periodCondition() const
{
    const QDate from = m_ui->EdtDataIni->date();
    const QDate to = m_ui->EdtDataFim->date();
    const QString time = u"(OF_MALHA_BAIXAS.DATA + COALESCE(OF_MALHA_BAIXAS.HORA, CAST('%1' AS TIME))) %2 "_s;
    // The dates by themselves besides, because there is an index over them.
    QString condition = within(u"OF_MALHA_BAIXAS.DATA"_s, from, to);
    if (from.isValid())
        condition += u" AND "_s + time.arg(u"00:00:01"_s, u">="_s) + moment(from, *timeIn(m_ui->EdtHoraIni, dayBegin));
    if (to.isValid())
        condition += u" AND "_s + time.arg(u"23:59:59"_s, u"<="_s) + moment(to, *timeIn(m_ui->EdtHoraFim, dayEnd));
    return condition;
}

QString TfmRelProd::Gera_SQL(const QString &price) const
{
    // A fabric has one price here, that of its lowest colour group: else a roll would count once per group. The period
    // leaves no order without rolls, so that they are joined at once and their index over the dates is used.
    const QString select = uR"(
        SELECT OF_MALHA.MAQUINA, SUM(OF_MALHA_BAIXAS.QTDE) AS QTDE, OF_MALHA.MATERIAL, MATERIAL.DESCRICAO,
               OF_MALHA_BAIXAS.TURNO, SUM(TABPRECO.PRECO * OF_MALHA_BAIXAS.QTDE) AS PRECO, OF_MALHA.CLIENTE,
               CLIENTE.NOME, MAQUINA.DESCRICAO AS DESC_MAQ, OF_MALHA_BAIXAS.DATA
        FROM {OF_MALHA} OF_MALHA
        INNER JOIN {OF_MALHA_BAIXAS} OF_MALHA_BAIXAS ON (OF_MALHA.NUM_OF = OF_MALHA_BAIXAS.NUM_OF)
        LEFT OUTER JOIN (
            SELECT P.CODIGO, P.REGIAO, MIN(P.%1) AS PRECO
            FROM {TABPRECO} P
            WHERE COALESCE(P.GRUPO_COR, '') = (SELECT MIN(COALESCE(Q.GRUPO_COR, '')) FROM {TABPRECO} Q
                                               WHERE Q.REGIAO = P.REGIAO AND Q.CODIGO = P.CODIGO)
            GROUP BY P.CODIGO, P.REGIAO
        ) TABPRECO ON (OF_MALHA.MATERIAL = TABPRECO.CODIGO AND TABPRECO.REGIAO = )"_s;
    const QString joins = uR"()
        LEFT OUTER JOIN {ENTIDADE} CLIENTE ON (OF_MALHA.CLIENTE = CLIENTE.CODCLI)
        LEFT OUTER JOIN {MAQUINA} MAQUINA ON (OF_MALHA.MAQUINA = MAQUINA.MAQUINA)
        LEFT OUTER JOIN {MATERIAL} MATERIAL ON (OF_MALHA.MATERIAL = MATERIAL.CODIGO)
        WHERE )"_s;
    const QString group = uR"(
        GROUP BY OF_MALHA.MAQUINA, OF_MALHA.MATERIAL, OF_MALHA_BAIXAS.TURNO, OF_MALHA.CLIENTE, CLIENTE.NOME,
                 MAQUINA.DESCRICAO, MATERIAL.DESCRICAO, OF_MALHA_BAIXAS.DATA)"_s;
    return select.arg(price) + Aspas(m_ui->EdtCodTab->text().trimmed()) + joins + periodCondition()
        + equals(u"OF_MALHA.CLIENTE"_s, m_ui->EdtCodCli->text())
        + equals(u"OF_MALHA.MATERIAL"_s, m_ui->EdtCodMat->text()) + group;
}

void TfmRelProd::Transfere_Dados()
{
    // By material, then by all else that tells rows apart, so that what the table's own order leaves open is settled.
    TTIQuery rows;
    openQuery(&rows,
        forCompanies(Gera_SQL(*priceColumn(m_ui->Edit1->text())), u"OF_MALHA"_s, m_ui->CkEmpresas->isChecked(),
            u"ORDER BY 3 NULLS FIRST, 1 NULLS FIRST, 7 NULLS FIRST, 10, 5 NULLS FIRST"_s));
    rows.FetchAll();
    m_produced.clear();
    for (rows.First(); !rows.Eof(); rows.Next()) {
        ProductionPivot::Produced one{.machine = rows.AsString(u"MAQUINA"_s),
            .machineName = rows.AsString(u"DESC_MAQ"_s),
            .material = rows.AsString(u"MATERIAL"_s),
            .materialName = rows.AsString(u"DESCRICAO"_s),
            .client = rows.AsString(u"CLIENTE"_s),
            .clientName = rows.AsString(u"NOME"_s),
            .shift = rows.AsString(u"TURNO"_s),
            .date = rows.AsDate(u"DATA"_s),
            .kg = rows.AsFloat(u"QTDE"_s)};
        if (!rows.IsNull(u"PRECO"_s))
            one.value = rows.AsFloat(u"PRECO"_s);
        m_produced.append(one);
    }
}

void TfmRelProd::BuscaDados()
{
    Transfere_Dados();
    m_from = m_ui->EdtDataIni->date();
    m_to = m_ui->EdtDataFim->date();
    fillTable();
    showCharts();
}

const TfmRelProd::Grouping &TfmRelProd::grouping() const
{
    static const Grouping material{
        u"Material"_s, u"Material;Desc_Mat"_s, u"WMalProdR"_s, u"DESC_MAT=Malha;MAQUINA=Máq.;"_s};
    static const Grouping machine{
        u"Máquina"_s, u"Maquina;Desc_Maq;Material"_s, u"WMalProd"_s, u"MAQUINA=Máq.;DESC_MAT=Malha;"_s};
    static const Grouping date{u"Data Baixa"_s, u"Dt_Baixa;Maquina;Desc_Maq;Material"_s, u"WMalProdD"_s,
        u"DT_BAIXA=Data;MAQUINA=Máq.;DESC_MAT=Malha;"_s};
    static const Grouping client{u"Cliente/Máquina"_s, u"Cod_Cliente;Cliente;Maquina"_s, u"WMalProdD"_s,
        u"CLIENTE=Cliente;MAQUINA=Máq.;DESC_MAT=Malha;"_s};
    if (m_ui->rbMaquina->isChecked())
        return machine;
    if (m_ui->rbDataBaixa->isChecked())
        return date;
    return m_ui->rbClienteMaquina->isChecked() ? client : material;
}

/// Of the period; where it is open, from the first roll or up to the last. Null when they are not wanted.
QVariant TfmRelProd::workingDays() const
{
    const QMap<QDate, double> days = ProductionPivot::byDay(m_produced);
    if (!m_ui->ckContarDiasUteis->isChecked() || days.isEmpty())
        return {};
    return workingDaysWithin(m_from.isValid() ? m_from : days.firstKey(), m_to.isValid() ? m_to : days.lastKey());
}

void TfmRelProd::fillTable()
{
    tbProducao->EmptyDataSet();
    tbProducao->setIndexFieldNames({});
    const QVariant days = workingDays();
    for (const ProductionPivot::Row &row : ProductionPivot::rows(m_produced, m_ui->rbDataBaixa->isChecked()))
        append(row, days);
    tbProducao->setIndexFieldNames(grouping().order);
    tbProducao->First();
}

void TfmRelProd::append(const ProductionPivot::Row &row, const QVariant &workingDays)
{
    const std::pair<QString, QVariant> values[]{{u"Maquina"_s, row.machine}, {u"Desc_Maq"_s, row.machineName},
        {u"Material"_s, row.material}, {u"Opcao"_s, grouping().name},
        {u"Dt_Baixa"_s, row.date.isValid() ? QVariant(row.date) : QVariant()}, {u"Dt_ini"_s, Format::date(m_from)},
        {u"dt_Fim"_s, Format::date(m_to)}, {u"Dias_uteis"_s, workingDays}, {u"Cod_Cliente"_s, row.client},
        {u"Cliente"_s, row.clientName}, {u"Desc_Mat"_s, row.materialName},
        {u"Total"_s, orNull(ProductionPivot::total(row.kg))},
        {u"Valor_Total"_s, orNull(ProductionPivot::total(row.value))}};
    tbProducao->Append();
    for (const auto &[name, value] : values)
        tbProducao->setValue(name, value);
    for (int shift = 0; shift < ProductionPivot::shiftCount; ++shift) {
        tbProducao->setValue(u"Turno%1"_s.arg(shift + 1), orNull(row.kg[size_t(shift)]));
        tbProducao->setValue(u"Valor%1"_s.arg(shift + 1), orNull(row.value[size_t(shift)]));
    }
    tbProducao->Post();
}

/// What was read last, by another choice.
void TfmRelProd::regroup()
{
    m_ui->DBGrid1->setDataSet(nullptr);
    fillTable();
    showColumns();
    m_ui->DBGrid1->setDataSet(tbProducao);
    rowsRearranged();
}

void TfmRelProd::showColumns()
{
    QString columns =
        grouping().columns + u"TURNO1=1º Turno;TURNO2=2º Turno;TURNO3=3º Turno;TURNO4=4º Turno;TOTAL=Total;"_s;
    if (m_ui->CheckBox1->isChecked())
        columns += u"VALOR1=Valor 1º;VALOR2=Valor 2º;VALOR3=Valor 3º;VALOR4=Valor 4º;VALOR_TOTAL=Valor;"_s;
    for (const QString &column : {u"CLIENTE=Cliente"_s, u"MATERIAL=Cód. Malha"_s, u"COD_CLIENTE=Cód. Cliente"_s,
             u"DESC_MAQ=Descrição da Máquina"_s}) {
        if (!grouping().columns.contains(column))
            columns += column + u';';
    }
    m_ui->DBGrid1->setColunas(columns);
}

void TfmRelProd::showCharts()
{
    const QMap<QString, ProductionPivot::ByShift> machines = ProductionPivot::byMachine(m_produced);
    QStringList names;
    QList<ReportChart::Series> shifts;
    for (int shift = 1; shift <= ProductionPivot::shiftCount; ++shift)
        shifts.append({u"%1º"_s.arg(shift), {}});
    shifts.append({u"Sem turno"_s, {}});
    for (auto machine = machines.cbegin(); machine != machines.cend(); ++machine) {
        names.append(machine.key().isEmpty() ? u"Sem máquina"_s : machine.key());
        for (size_t place = 0; place < machine->size(); ++place)
            shifts[qsizetype(place)].values.append((*machine)[place].value_or(0));
    }
    constexpr int mostMachines = 24;
    m_ui->GraficoMaquinas->showColumns(ReportChart::Columns::Stacked, names, shifts, mostMachines);
    m_ui->GraficoDias->showDays(ProductionPivot::byDay(m_produced));
}

const TDataSet &TfmRelProd::result() const
{
    return *tbProducao;
}

QString TfmRelProd::filters() const
{
    const QTime from = *timeIn(m_ui->EdtHoraIni, dayBegin);
    const QTime to = *timeIn(m_ui->EdtHoraFim, dayEnd);
    return Text()
        .add(u"Período"_s, periodText(m_ui->EdtDataIni->date(), m_ui->EdtDataFim->date()))
        .add(u"Hora inicial"_s, from == dayBegin ? QString() : Format::time(from))
        .add(u"Hora final"_s, to == dayEnd ? QString() : Format::time(to))
        .add(u"Cliente"_s, chosen(m_ui->PqCliente))
        .add(u"Material"_s, chosen(m_ui->PqMaterial))
        .add(u"Tabela"_s, chosen(m_ui->PqTabela))
        .add(u"Prazo"_s, m_ui->Edit1->text())
        .add(u"Empresas"_s, m_ui->CkEmpresas->isChecked() ? u"todas"_s : QString())
        .text();
}

ReportCall TfmRelProd::report() const
{
    ReportCall call;
    call.name = m_ui->CheckBox1->isChecked() ? u"WMalProdT"_s : grouping().layout;
    call.dataSets = {{u"tbProducao"_s, tbProducao}};
    if (m_ui->ckGrafico->isChecked())
        call.parameters.insert(u"grafico"_s, ReportChart::forPaper({m_ui->GraficoMaquinas, m_ui->GraficoDias}));
    return call;
}
