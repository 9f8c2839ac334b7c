// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/mainwindow.h"

#include "host/qenhost.h"
#include "module/host_services/comport.h"
#include "module/host_services/icons.h"
#include "module/host_services/tabelas.h"
#include "ui_mainwindow.h"

#include <QCloseEvent>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSet>
#include <QSettings>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace {

const QString geometryKey = QStringLiteral("Janela/geometria");
constexpr int startButtonsPerRow = 2;
constexpr int startButtonCharacters = 56; ///< room for the longest caption and the icon
constexpr int shortcuts = 9; ///< Ctrl+1 to Ctrl+9
const QSize startIcon(32, 32);

/// Alt and a letter, as far as the form's controls use it.
QSet<QKeySequence> mnemonicsOf(QWidget *form)
{
    QStringList texts;
    for (const QWidget *child : form->findChildren<QWidget *>()) {
        texts << child->property("text").toString() << child->property("title").toString();
        if (const auto *tabs = qobject_cast<const QTabBar *>(child)) {
            for (int i = 0; i < tabs->count(); ++i)
                texts << tabs->tabText(i);
        }
    }
    QSet<QKeySequence> result;
    for (const QString &text : texts)
        result.insert(QKeySequence::mnemonic(text));
    return result;
}

} // namespace

MainWindow::MainWindow(QenHost &host, const QString &engineName, const QString &databaseName)
    : m_ui(std::make_unique<Ui::MainWindow>())
    , m_host(host)
    , m_engineName(engineName)
    , m_databaseName(databaseName)
{
    m_ui->setupUi(this);
    m_ui->picture->setPixmap(Icons::get(u"app").pixmap(96, 96));
    buildMenus();
    buildStatusBar(engineName);
    connectActions();
    connectWindowActions();
    showCompany();
    showOpenScreens();
    restoreGeometry(QByteArray::fromBase64(m_host.settings().value(geometryKey).toString().toLatin1()));
    m_host.setPlacer([this](QWidget *form) { place(form); });
    connect(&m_host.busyMarker(), &BusyMarker::changed, this, &MainWindow::showBusy);
}

MainWindow::~MainWindow()
{
    m_host.setPlacer({});
}

void MainWindow::run(const std::function<void()> &action)
{
    try {
        action();
    } catch (...) {
        m_host.showException(this, std::current_exception());
    }
}

void MainWindow::buildMenus()
{
    const QList<ScreenCatalog::Entry> entries = ScreenCatalog::registered();
    int number = 0;
    for (const ScreenCatalog::Folder folder : {ScreenCatalog::Folder::Production, ScreenCatalog::Folder::Registries,
             ScreenCatalog::Folder::Invoicing, ScreenCatalog::Folder::Reports, ScreenCatalog::Folder::Others}) {
        QList<ScreenCatalog::Entry> inFolder;
        QStringList texts;
        for (const ScreenCatalog::Entry &entry : entries) {
            if (entry.folder == folder) {
                inFolder.append(entry);
                texts.append(entry.menuText());
            }
        }
        const QStringList marked = ScreenCatalog::withMnemonics(texts);
        QMenu *menu = menuOf(folder);
        for (qsizetype i = 0; i < inFolder.size(); ++i) {
            QAction *action = screenAction(inFolder[i], marked[i]);
            if (++number <= shortcuts)
                action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_0 + number)));
            menu->addAction(action);
            if (!inFolder[i].shortName.isEmpty())
                addStartButton(inFolder[i], action);
        }
        menu->menuAction()->setVisible(!inFolder.isEmpty());
    }
    for (QAction *menu : m_ui->menuBar->actions())
        m_menuTitles.insert(menu, menu->text());
    m_ui->toolBar->setVisible(!m_ui->toolBar->actions().isEmpty());
}

QAction *MainWindow::screenAction(const ScreenCatalog::Entry &entry, const QString &text)
{
    auto *action = new QAction(Icons::get(entry.icon), text, this);
    action->setObjectName(entry.className);
    action->setIconText(entry.shortName);
    connect(action, &QAction::triggered, this, [this, name = entry.className] { openScreen(name); });
    return action;
}

QMenu *MainWindow::menuOf(ScreenCatalog::Folder folder) const
{
    switch (folder) {
    case ScreenCatalog::Folder::Production:
        return m_ui->menuProduction;
    case ScreenCatalog::Folder::Registries:
        return m_ui->menuRegistries;
    case ScreenCatalog::Folder::Invoicing:
        return m_ui->menuInvoicing;
    case ScreenCatalog::Folder::Reports:
        return m_ui->menuReports;
    case ScreenCatalog::Folder::Others:
        break;
    }
    return m_ui->menuOthers;
}

void MainWindow::addStartButton(const ScreenCatalog::Entry &entry, QAction *action)
{
    const QString keys = action->shortcut().toString(QKeySequence::NativeText);
    action->setToolTip(keys.isEmpty() ? entry.menuText() : u"%1 (%2)"_s.arg(entry.menuText(), keys));
    m_ui->toolBar->addAction(action);

    auto *button = new QPushButton(action->icon(), u"  "_s + entry.menuText());
    button->setObjectName(u"start"_s + entry.className);
    button->setIconSize(startIcon);
    button->setToolTip(action->toolTip());
    button->setStyleSheet(u"text-align: left; padding: 14px 22px;"_s);
    button->setFixedWidth(fontMetrics().averageCharWidth() * startButtonCharacters);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    const int count = m_ui->startButtons->count();
    m_ui->startButtons->addWidget(button, count / startButtonsPerRow, count % startButtonsPerRow);
}

void MainWindow::buildStatusBar(const QString &engineName)
{
    const auto add = [this](const QString &name, int stretch) {
        auto *label = new QLabel;
        label->setObjectName(name);
        label->setTextFormat(Qt::PlainText);
        label->setContentsMargins(8, 2, 8, 2);
        m_ui->statusBar->addPermanentWidget(label, stretch);
        return label;
    };
    m_busy = new QLabel(u"Processando..."_s);
    m_busy->setObjectName(u"statusBusy"_s);
    m_busy->setStyleSheet(u"color: #00796b; font-weight: 600;"_s);
    m_busy->setContentsMargins(8, 2, 8, 2);
    m_ui->statusBar->addWidget(m_busy);
    m_busy->hide();
    m_company = add(u"statusCompany"_s, 0);
    m_user = add(u"statusUser"_s, 0);
    add(u"statusEngine"_s, 0)->setText(engineName);
}

void MainWindow::connectActions()
{
    m_ui->actionCompany->setIcon(Icons::get(u"company"));
    m_ui->actionScale->setIcon(Icons::get(u"scale"));
    m_ui->actionQuit->setIcon(Icons::get(u"close"));
    connect(m_ui->actionCompany, &QAction::triggered, this, [this] { run([this] { chooseCompany(); }); });
    connect(m_ui->actionScale, &QAction::triggered, this, [this] { run([this] { setUpScale(); }); });
    connect(m_ui->actionAbout, &QAction::triggered, this, &MainWindow::about);
    connect(m_ui->actionQuit, &QAction::triggered, this, &QWidget::close);
}

void MainWindow::connectWindowActions()
{
    QTabWidget *screens = m_ui->screens;
    connect(m_ui->actionNext, &QAction::triggered, this, [this] { moveBy(1); });
    connect(m_ui->actionPrevious, &QAction::triggered, this, [this] { moveBy(-1); });
    connect(m_ui->actionClose, &QAction::triggered, this, [this, screens] { closeScreen(screens->currentIndex()); });
    connect(screens, &QTabWidget::tabCloseRequested, this, &MainWindow::closeScreen);
    connect(screens, &QTabWidget::currentChanged, this, &MainWindow::showOpenScreens);
}

void MainWindow::openScreen(const QString &className)
{
    run([&] { m_host.loadForm(u"qenMalharia"_s, className, false, true); });
}

void MainWindow::place(QWidget *form)
{
    QTabWidget *screens = m_ui->screens;
    if (screens->indexOf(form) < 0) {
        QIcon icon;
        if (const auto *action = findChild<QAction *>(QString::fromLatin1(form->metaObject()->className())))
            icon = action->icon();
        screens->addTab(form, icon, QString(form->windowTitle()).replace(u'&', u"&&"_s));
    }
    screens->setCurrentWidget(form);
    if (!form->isAncestorOf(focusWidget()))
        form->focusWidget() ? form->focusWidget()->setFocus() : form->setFocus();
}

bool MainWindow::closeScreen(int tab)
{
    QWidget *form = m_ui->screens->widget(tab);
    if (!form)
        return true;
    if (!form->close()) {
        m_ui->screens->setCurrentWidget(form);
        return false;
    }
    // At once: the shared tables that it holds are those of this company.
    delete form;
    return true;
}

bool MainWindow::closeScreens()
{
    while (m_ui->screens->count() > 0) {
        if (!closeScreen(m_ui->screens->count() - 1))
            return false;
    }
    return true;
}

void MainWindow::moveBy(int tabs)
{
    const int count = m_ui->screens->count();
    if (count > 0)
        m_ui->screens->setCurrentIndex((m_ui->screens->currentIndex() + tabs + count) % count);
}

void MainWindow::showOpenScreens()
{
    const bool any = m_ui->screens->count() > 0;
    m_ui->pages->setCurrentWidget(any ? m_ui->screensPage : m_ui->startPage);
    for (QAction *action : {m_ui->actionNext, m_ui->actionPrevious, m_ui->actionClose})
        action->setEnabled(any);
    yieldMnemonics(m_ui->screens->currentWidget());
}

void MainWindow::yieldMnemonics(QWidget *form)
{
    const QSet<QKeySequence> used = form ? mnemonicsOf(form) : QSet<QKeySequence>();
    for (auto menu = m_menuTitles.cbegin(); menu != m_menuTitles.cend(); ++menu) {
        const bool taken = used.contains(QKeySequence::mnemonic(menu.value()));
        menu.key()->setText(taken ? QString(menu.value()).remove(u'&') : menu.value());
    }
}

void MainWindow::showCompany()
{
    const Company &company = m_host.currentCompany();
    setWindowTitle(u"%1 - qen"_s.arg(company.name));
    m_ui->companyName->setText(company.label());
    m_company->setText(u"Empresa %1"_s.arg(company.label()));
    m_user->setText(u"Usuário %1"_s.arg(m_host.user()));
}

void MainWindow::tell(const QString &text)
{
    constexpr int seconds = 15;
    m_ui->statusBar->showMessage(text, seconds * 1000);
}

void MainWindow::showBusy(bool busy)
{
    m_busy->setVisible(busy);
    // The work that follows keeps the event loop waiting.
    m_ui->statusBar->repaint();
}

void MainWindow::chooseCompany()
{
    const QList<Company> companies = Session(*Tabela->IBDatabase).companies(m_host.account());
    QStringList labels;
    int current = 0;
    for (const Company &company : companies) {
        if (company.number == m_host.company())
            current = int(labels.size());
        labels.append(company.label());
    }
    bool chosen = false;
    const QString label =
        QInputDialog::getItem(this, u"Trocar empresa"_s, u"Empresa"_s, labels, current, false, &chosen);
    if (chosen)
        changeCompany(companies[labels.indexOf(label)].number);
}

void MainWindow::changeCompany(int company)
{
    if (company == m_host.company() || !closeScreens())
        return;
    m_host.login(m_host.user(), company);
    showCompany();
}

void MainWindow::setUpScale()
{
    TCustomComPort port;
    port.LoadSettings(m_host.settings(), scaleSettingsKey);
    if (port.ShowSetupDialog(this))
        port.StoreSettings(m_host.settings(), scaleSettingsKey);
}

void MainWindow::about()
{
    const QString text =
        u"<p style=\"font-size:15pt; font-weight:600\">qen %1</p><p>Gestão de malharia: ordens de "
        "fabricação, baixa de rolos na balança, fios de clientes e faturamento.</p><p>Banco de dados: "
        "%2<br>%3</p><p>Qt %4 · Licença GPL-3.0-or-later</p>"_s.arg(QCoreApplication::applicationVersion(),
            m_engineName, m_databaseName.toHtmlEscaped(), QString::fromLatin1(qVersion()));
    QMessageBox box(QMessageBox::NoIcon, u"Sobre o qen"_s, text, QMessageBox::Ok, this);
    box.setIconPixmap(Icons::get(u"app").pixmap(64, 64));
    box.exec();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!closeScreens()) {
        event->ignore();
        return;
    }
    m_host.settings().setValue(geometryKey, QString::fromLatin1(saveGeometry().toBase64()));
    event->accept();
}
