// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/recordbar.h"

#include "module/look.h"
#include "ui_recordbar.h"

#include <QAbstractButton>

using namespace Qt::StringLiterals;

RecordBar::RecordBar(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::RecordBar>())
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    // Both captions of the second bar have the same mnemonic: it confirms, and Esc cancels.
    m_ui->SbDesistir->setShortcut({});
    // Neither bar moves what stands below when it takes the other's place.
    const int height = qMax(m_ui->PainelBarra->sizeHint().height(), m_ui->PainelConfirma->sizeHint().height());
    m_ui->PainelBarra->setMinimumHeight(height);
    m_ui->PainelConfirma->setMinimumHeight(height);
    showConfirmation(false);
}

RecordBar::~RecordBar() = default;

void RecordBar::showConfirmation(bool editing)
{
    m_ui->PainelBarra->setVisible(!editing);
    m_ui->PainelConfirma->setVisible(editing);
}

void RecordBar::setSemBotoes(const QString &names)
{
    m_hidden = names;
    for (const QString &name : names.split(u' ', Qt::SkipEmptyParts)) {
        if (auto *button = findChild<QAbstractButton *>(name))
            button->hide();
    }
}

QString RecordBar::insertButton() const
{
    return m_ui->btnincluir->objectName();
}

void RecordBar::setBotaoIncluir(const QString &name)
{
    m_ui->btnincluir->setObjectName(name);
}

QString RecordBar::abandonText() const
{
    return m_ui->SbDesistir->text();
}

void RecordBar::setTextoDesistir(const QString &text)
{
    m_ui->SbDesistir->setText(text);
}
