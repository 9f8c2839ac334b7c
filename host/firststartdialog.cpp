// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/firststartdialog.h"

#include "host/databaseopening.h"
#include "module/host_services/errors.h"
#include "module/host_services/icons.h"
#include "ui_firststartdialog.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

FirstStartDialog::FirstStartDialog(TTIDatabase &database, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::FirstStartDialog>())
    , m_database(database)
{
    m_ui->setupUi(this);
    m_ui->picture->setPixmap(Icons::get(u"app").pixmap(m_ui->picture->minimumSize()));
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(u"Começar"_s);
    m_ui->problem->hide();
}

FirstStartDialog::~FirstStartDialog() = default;

QString FirstStartDialog::user() const
{
    return m_ui->user->text().trimmed();
}

void FirstStartDialog::refuse(const QString &text, QWidget *atFault)
{
    m_ui->problem->setText(text);
    m_ui->problem->show();
    atFault->setFocus();
}

void FirstStartDialog::accept()
{
    const QString company = m_ui->company->text().trimmed();
    if (company.isEmpty())
        return refuse(u"Informe o nome da empresa."_s, m_ui->company);
    if (user().isEmpty())
        return refuse(u"Informe o nome do administrador."_s, m_ui->user);
    if (m_ui->password->text().size() < shortestPassword) {
        return refuse(u"A senha deve ter pelo menos %1 caracteres."_s.arg(int(shortestPassword)), m_ui->password);
    }
    if (m_ui->password->text() != m_ui->again->text()) {
        m_ui->again->clear();
        return refuse(u"As duas senhas são diferentes. Digite de novo."_s, m_ui->again);
    }
    try {
        DatabaseOpening::firstStart(m_database, company, user(), m_ui->password->text());
    } catch (const EQen &error) {
        return refuse(error.sentence(), m_ui->user);
    }
    QDialog::accept();
}
