// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Price table: the prices of a region for another.

#include "ui_mattabpreco.h"

#include "registries/mattabpreco.h"

#include "module/host_services/busy.h"
#include "module/messages.h"
#include "registries/pricecopy.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

void TfmMatTabPreco::BtincluirCarlosClick()
{
    if (isEditing() || !Acessa(className(), u'A', u"0"_s, {}))
        return;
    showCopy(true);
}

void TfmMatTabPreco::showCopy(bool on)
{
    m_ui->PainelDados->setHidden(on);
    m_ui->PainelCopia->setVisible(on);
    for (QWidget *other : {static_cast<QWidget *>(m_ui->Barras), static_cast<QWidget *>(m_ui->DBGrid1),
             static_cast<QWidget *>(m_ui->BtincluirCarlos)})
        other->setEnabled(!on);
    if (!on) {
        m_ui->DBGrid1->setFocus();
        return;
    }
    m_ui->EdtRegiaoDe->clear();
    m_ui->EdtRegiaoPara->clear();
    m_ui->EdtPercentual->setValue(0);
    m_ui->cbExistentes->setCurrentIndex(0);
    m_ui->lbCopia->clear();
    m_ui->EdtRegiaoDe->setFocus();
}

void TfmMatTabPreco::SbDesistirCopiaClick()
{
    showCopy(false);
}

void TfmMatTabPreco::EdtRegiaoDeExit()
{
    showCopyCount();
}

void TfmMatTabPreco::EdtRegiaoParaExit()
{
    showCopyCount();
}

PriceCopy TfmMatTabPreco::typedCopy() const
{
    return {m_ui->EdtRegiaoDe->text().trimmed(), m_ui->EdtRegiaoPara->text().trimmed(), m_ui->EdtPercentual->value(),
        m_ui->cbExistentes->currentIndex() == 1};
}

void TfmMatTabPreco::showCopyCount()
{
    const PriceCopy copy = typedCopy();
    m_ui->lbCopia->clear();
    if (copy.from.isEmpty() || copy.to.isEmpty())
        return;
    const PriceCount count = countPrices(database(), copy);
    m_ui->lbCopia->setText(
        u"Preços na origem: %1. Já existem no destino: %2."_s.arg(count.added + count.present).arg(count.present));
}

bool TfmMatTabPreco::mayCopy(const PriceCopy &copy)
{
    QString fault;
    QWidget *atFault = m_ui->EdtRegiaoDe;
    if (copy.from.isEmpty() || !isKnown(m_ui->PqRegiaoDe)) {
        fault = u"Região de origem não Existe. Impossível Continuar."_s;
    } else if (copy.to.isEmpty() || !isKnown(m_ui->PqRegiaoPara)) {
        fault = u"Região de destino não Existe. Impossível Continuar."_s;
        atFault = m_ui->EdtRegiaoPara;
    } else if (copy.from == copy.to) {
        fault = u"A origem e o destino são a mesma região. Impossível Continuar."_s;
        atFault = m_ui->EdtRegiaoPara;
    } else if (copy.percent < -100) {
        fault = u"O percentual não pode reduzir mais do que 100 %. Impossível Continuar."_s;
        atFault = m_ui->EdtPercentual;
    }
    if (!fault.isEmpty()) {
        refuse(fault, atFault);
        return false;
    }
    const PriceCount count = countPrices(database(), copy);
    if (count.added + count.present == 0) {
        refuse(u"A região de origem não tem preços. Impossível Continuar."_s, m_ui->EdtRegiaoDe);
        return false;
    }
    return !copy.replace || count.present == 0
        || Messages::ask(this,
            u"Preços que serão substituídos na região %1: %2. Deseja continuar?"_s.arg(
                copy.to, QString::number(count.present)));
}

void TfmMatTabPreco::SbCopiarClick()
{
    const PriceCopy copy = typedCopy();
    if (!mayCopy(copy))
        return;
    PriceCount count;
    {
        const Busy busy(this);
        count = copyPrices(database(), copy);
    }
    showCopy(false);
    showDerived();
    Messages::inform(this,
        (copy.replace ? u"Preços incluídos: %1. Substituídos: %2."_s
                      : u"Preços incluídos: %1. Mantidos como estavam: %2."_s)
            .arg(count.added)
            .arg(count.present));
}
