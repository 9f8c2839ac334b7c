// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/logindialog.h"

#include "host/firstpaint.h"
#include "host/session.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/icons.h"
#include "ui_logindialog.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

const QString lastUser = QStringLiteral("Entrada/usuario");
const QString lastCompany = QStringLiteral("Entrada/empresa");

} // namespace

LoginDialog::LoginDialog(TTIDatabase &database, QSettings &settings, const QString &hint, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::LoginDialog>())
    , m_database(database)
    , m_settings(settings)
    , m_hint(hint)
{
    m_ui->setupUi(this);
    m_ui->picture->setPixmap(Icons::get(u"app").pixmap(m_ui->picture->minimumSize()));
    m_ui->version->setText(u"versão %1"_s.arg(QCoreApplication::applicationVersion()));
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(u"Entrar"_s);
    m_ui->problem->hide();
    m_ui->hint->setText(hint);
    m_ui->hint->setVisible(!hint.isEmpty());
    m_ui->user->setText(m_settings.value(lastUser).toString());
    if (!m_ui->user->text().isEmpty())
        m_ui->password->setFocus();
    connect(m_ui->user, &QLineEdit::editingFinished, this, &LoginDialog::listCompanies);
    listCompanies();
}

LoginDialog::~LoginDialog()
{
    // A field that goes while it has the focus tells that it was left.
    m_ui->user->disconnect(this);
}

void LoginDialog::openOnceShown(const std::function<bool()> &open)
{
    m_ui->hint->setText(u"Abrindo o banco de dados..."_s);
    m_ui->hint->show();
    new FirstPaint(this, [this, open] { opened(open); });
}

void LoginDialog::opened(const std::function<bool()> &open)
{
    if (!isVisible())
        return;
    m_opening = true;
    bool isOpen = false;
    try {
        isOpen = open();
    } catch (...) {
        m_failure = std::current_exception();
    }
    m_opening = false;
    if (!isOpen)
        return reject();
    m_ui->hint->setText(m_hint);
    m_ui->hint->setVisible(!m_hint.isEmpty());
    listCompanies();
}

int LoginDialog::company() const
{
    return m_ui->company->currentData().toInt();
}

void LoginDialog::listCompanies()
{
    const QString user = m_ui->user->text().trimmed();
    if (user == m_listedFor || !m_database.isOpen() || m_opening)
        return;
    m_listedFor = user;
    m_ui->company->clear();
    try {
        const Session session(m_database);
        const std::optional<Account> account = session.account(user);
        if (!account)
            return;
        for (const Company &company : session.companies(*account))
            m_ui->company->addItem(company.label(), company.number);
    } catch (const EQen &error) {
        return refuse(error.sentence(), m_ui->user);
    }
    m_ui->company->setCurrentIndex(qMax(0, m_ui->company->findData(m_settings.value(lastCompany).toInt())));
}

void LoginDialog::refuse(const QString &text, QWidget *atFault)
{
    m_ui->problem->setText(text);
    m_ui->problem->show();
    atFault->setFocus();
}

void LoginDialog::accept()
{
    if (m_opening || !m_database.isOpen())
        return;
    // Enter goes on to what is still missing.
    m_ui->problem->hide();
    if (m_ui->user->text().trimmed().isEmpty())
        return m_ui->user->setFocus();
    if (m_ui->password->text().isEmpty())
        return m_ui->password->setFocus();
    try {
        logIn();
    } catch (const EQen &error) {
        m_ui->password->clear();
        refuse(error.sentence(), m_ui->password);
    }
}

void LoginDialog::reject()
{
    if (!m_opening)
        QDialog::reject();
}

void LoginDialog::logIn()
{
    const Account account = Session(m_database).authenticate(m_ui->user->text(), m_ui->password->text());
    listCompanies();
    if (company() == 0)
        throw EQen(u"Este usuário não tem acesso a nenhuma empresa. Procure o administrador."_s);
    m_user = account.user;
    m_settings.setValue(lastUser, m_user);
    m_settings.setValue(lastCompany, company());
    QDialog::accept();
}
