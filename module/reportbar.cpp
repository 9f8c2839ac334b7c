// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_reportbar.h"

#include "module/reportbar.h"

#include "module/look.h"

using namespace Qt::StringLiterals;

ReportBar::ReportBar(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::ReportBar>())
{
    m_ui->setupUi(this);
    Look::addIcons(this);
}

ReportBar::~ReportBar() = default;

QString ReportBar::consultText() const
{
    return m_ui->BtnExecutaSQL->text();
}

void ReportBar::setTextoConsultar(const QString &text)
{
    m_ui->BtnExecutaSQL->setText(text);
}

QString ReportBar::printText() const
{
    return m_ui->BtnImprimir->text();
}

void ReportBar::setTextoImprimir(const QString &text)
{
    m_ui->BtnImprimir->setText(text);
}

QString ReportBar::closeText() const
{
    return m_ui->BitBtn5->text();
}

void ReportBar::setTextoFechar(const QString &text)
{
    m_ui->BitBtn5->setText(text);
}

QString ReportBar::buttonNames() const
{
    return QStringList{m_ui->BtnExecutaSQL->objectName(), m_ui->BtnImprimir->objectName(), m_ui->BitBtn5->objectName()}
        .join(u' ');
}

void ReportBar::setBotoes(const QString &names)
{
    m_ui->BtnExecutaSQL->setObjectName(names.section(u' ', 0, 0));
    m_ui->BtnImprimir->setObjectName(names.section(u' ', 1, 1));
    m_ui->BitBtn5->setObjectName(names.section(u' ', 2, 2));
}

QPushButton *ReportBar::consultButton() const
{
    return m_ui->BtnExecutaSQL;
}

void ReportBar::tell(const QString &outcome)
{
    m_ui->lbResultado->setText(outcome);
}
