// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/recordinghost.h"

#include "module/host_services/database.h"
#include "module/host_services/dataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/sqltext.h"
#include "module/host_services/tabelas.h"

#include <QWidget>

using namespace Qt::StringLiterals;

RecordingHost::RecordingHost()
    : m_settings(m_folder.filePath(u"qen.conf"_s), QSettings::IniFormat)
{
}

bool RecordingHost::hasRight(const QString &screen, QChar letter, const QString &level)
{
    const QString right = u"%1 %2 %3"_s.arg(screen, QString(letter), level);
    asked.append(right);
    return !refused.contains(right);
}

QString RecordingHost::parameter(const QString &module, int number)
{
    return parameters.value(u"%1 %2"_s.arg(module).arg(number));
}

void RecordingHost::writeLog(const QString &label, const QString &text, TOperacaoLog kind, const QString &key)
{
    log.append(QStringList{label, text, QString::number(int(kind)), key}.join(u'|'));
    if (!logTable)
        return;
    Tabela->IBDatabase->run(
        u"INSERT INTO QEN_LOG (EMPRESA, USUARIO, ROTULO, TEXTO, OPERACAO, CHAVE) "
        "VALUES (%1, %2, %3, %4, %5, %6)"_s.arg(QString::number(companyNumber), SqlText::quoted(userName),
            SqlText::quoted(label), SqlText::quoted(text), QString::number(int(kind)), SqlText::quoted(key)));
}

void RecordingHost::setBusy(bool on, QObject *)
{
    busy += on ? 1 : -1;
    ++busyCalls;
}

QWidget *RecordingHost::loadForm(const QString &package, const QString &className, bool modal, bool show)
{
    loaded.append(u"%1|%2|%3|%4"_s.arg(package, className).arg(modal).arg(show));
    return nullptr;
}

QString RecordingHost::findFile(const QString &code, const QString &folder, TTipo kind)
{
    return u"%1/%2.%3"_s.arg(folder, code).arg(int(kind));
}

int RecordingHost::createInventory(const InventoryColumns &, TDataSet &rows)
{
    return rows.rowCount();
}

void RecordingHost::showException(QWidget *, std::exception_ptr error)
{
    try {
        std::rethrow_exception(error);
    } catch (const EQen &known) {
        failures.append(known.sentence());
    } catch (const std::exception &other) {
        failures.append(QString::fromUtf8(other.what()));
    }
}
