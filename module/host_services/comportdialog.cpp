// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/comportdialog.h"

#include "module/host_services/format.h"
#include "module/host_services/scaleframe.h"
#include "ui_comportdialog.h"

#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSerialPortInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestReading = 40;
constexpr qsizetype shownBytes = 40;

/// Bytes as one can read them: "<STX>,1 002345<CR>".
QString visible(const QByteArray &bytes)
{
    QString text;
    for (const char byte : bytes) {
        const auto code = static_cast<uchar>(byte);
        if (code == 0x02)
            text += u"<STX>"_s;
        else if (code == 0x03)
            text += u"<ETX>"_s;
        else if (code == '\r')
            text += u"<CR>"_s;
        else if (code == '\n')
            text += u"<LF>"_s;
        else if (code >= ' ' && code < 0x7F)
            text += QLatin1Char(byte);
        else
            text += u"<%1>"_s.arg(code, 2, 16, '0'_L1).toUpper();
    }
    return text;
}

/// Selects the entry with this value; adds it when the list does not have it.
void select(QComboBox *box, int value)
{
    if (box->findData(value) < 0)
        box->addItem(QString::number(value), value);
    box->setCurrentIndex(box->findData(value));
}

} // namespace

ComPortDialog::ComPortDialog(const ComPortSettings &settings, QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::ComPortDialog>())
{
    ui->setupUi(this);
    ui->bbBotoes->button(QDialogButtonBox::Ok)->setText(u"OK"_s);
    ui->bbBotoes->button(QDialogButtonBox::Cancel)->setText(u"&Cancelar"_s);

    if (!ComPortSettings::simulatedDevice().isEmpty())
        ui->cbPorta->addItem(ComPortSettings::simulatedPort);
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts())
        ui->cbPorta->addItem(info.systemLocation());
    for (const qint32 rate : {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200})
        ui->cbVelocidade->addItem(QString::number(rate), rate);
    for (const int bits : {7, 8})
        ui->cbBits->addItem(QString::number(bits), bits);
    ui->cbParidade->addItem(u"Nenhuma"_s, QSerialPort::NoParity);
    ui->cbParidade->addItem(u"Par"_s, QSerialPort::EvenParity);
    ui->cbParidade->addItem(u"Ímpar"_s, QSerialPort::OddParity);
    ui->cbParidade->addItem(u"Marca"_s, QSerialPort::MarkParity);
    ui->cbParidade->addItem(u"Espaço"_s, QSerialPort::SpaceParity);
    for (const int bits : {1, 2})
        ui->cbParada->addItem(QString::number(bits), bits);
    ui->cbFluxo->addItem(u"Nenhum"_s, QSerialPort::NoFlowControl);
    ui->cbFluxo->addItem(u"RTS/CTS"_s, QSerialPort::HardwareControl);
    ui->cbFluxo->addItem(u"XON/XOFF"_s, QSerialPort::SoftwareControl);
    static const QRegularExpression hexPairs(u"(?:[0-9A-Fa-f]{2} ?)*"_s);
    ui->edtPedido->setValidator(new QRegularExpressionValidator(hexPairs, ui->edtPedido));

    connect(ui->btnTestar, &QPushButton::clicked, this, &ComPortDialog::test);
    showSettings(settings);
    ui->cbPorta->setFocus();
}

ComPortDialog::~ComPortDialog() = default;

void ComPortDialog::showSettings(const ComPortSettings &settings)
{
    ui->cbPorta->setEditText(settings.port);
    select(ui->cbVelocidade, settings.baudRate);
    select(ui->cbBits, settings.dataBits);
    select(ui->cbParidade, settings.parity);
    select(ui->cbParada, settings.stopBits);
    select(ui->cbFluxo, settings.flowControl);
    ui->sbEspera->setValue(settings.waitMs);
    ui->edtPedido->setText(QString::fromLatin1(settings.request.toHex(' ')).toUpper());
}

ComPortSettings ComPortDialog::settings() const
{
    ComPortSettings settings;
    settings.port = ui->cbPorta->currentText().trimmed();
    settings.baudRate = ui->cbVelocidade->currentData().toInt();
    settings.dataBits = static_cast<QSerialPort::DataBits>(ui->cbBits->currentData().toInt());
    settings.parity = static_cast<QSerialPort::Parity>(ui->cbParidade->currentData().toInt());
    settings.stopBits = static_cast<QSerialPort::StopBits>(ui->cbParada->currentData().toInt());
    settings.flowControl = static_cast<QSerialPort::FlowControl>(ui->cbFluxo->currentData().toInt());
    settings.waitMs = ui->sbEspera->value();
    settings.request = QByteArray::fromHex(ui->edtPedido->text().toLatin1());
    return settings;
}

void ComPortDialog::accept()
{
    if (!TCustomComPort::Waiting() && checkFields())
        QDialog::accept();
}

void ComPortDialog::reject()
{
    if (!TCustomComPort::Waiting())
        QDialog::reject();
}

bool ComPortDialog::checkFields()
{
    if (ui->cbPorta->currentText().trimmed().isEmpty()) {
        showMessage(u"Especifique a porta."_s);
        ui->cbPorta->setFocus();
        return false;
    }
    if (!ui->edtPedido->hasAcceptableInput()) {
        showMessage(u"O pedido é escrito em pares de dígitos hexadecimais, por exemplo 05."_s);
        ui->edtPedido->setFocus();
        return false;
    }
    return true;
}

void ComPortDialog::test()
{
    if (TCustomComPort::Waiting() || !checkFields())
        return;
    ui->edtTexto->clear();
    ui->edtPeso->clear();
    showMessage(u"Lendo a balança…"_s);
    TCustomComPort port;
    port.SetSettings(settings());
    try {
        port.Open();
        if (port.WaitForReading())
            showReading(port.ReceivedBytes(), port.ReadStr(longestReading));
    } catch (const EComPort &error) {
        showMessage(error.sentence());
    }
}

void ComPortDialog::showReading(const QByteArray &received, const QString &text)
{
    const ScaleReading reading = readScaleText(text.toLatin1(), '\r');
    ui->edtTexto->setText(visible(text.isEmpty() ? received.right(shownBytes) : reading.raw));
    ui->edtPeso->setText(Format::number(reading.kg, u",0.000"_s) + u" kg"_s);
    if (reading.isWeight())
        showMessage(u"Leitura correta."_s);
    else if (text.isEmpty() && !received.isEmpty())
        showMessage(
            u"A balança enviou dados que não formam uma leitura. Verifique a velocidade, os bits e a paridade."_s);
    else
        showMessage(reading.reason);
}

void ComPortDialog::showMessage(const QString &text)
{
    ui->lbMensagem->setText(text);
}
