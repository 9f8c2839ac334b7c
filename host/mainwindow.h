// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/screencatalog.h"

#include <QHash>
#include <QMainWindow>

#include <functional>
#include <memory>

namespace Ui {
class MainWindow;
}
class QLabel;
class QMenu;
class QenHost;

/// The menus and the open screens, one tab each; with none open, the screens that are used all day.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Lists the screens that are registered by now. `databaseName` is shown to whoever asks about the program.
    /// The host must outlive it, with the user logged in.
    MainWindow(QenHost &host, const QString &engineName, const QString &databaseName);
    ~MainWindow() override;

    void openScreen(const QString &className);
    /// Stops at the first screen that refuses, and shows it. True when none is open any more.
    bool closeScreens();
    /// Goes on in another company, if all screens can be closed.
    void changeCompany(int company);
    /// A line in the status bar, for some seconds.
    void tell(const QString &text);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildMenus();
    QAction *screenAction(const ScreenCatalog::Entry &entry, const QString &text);
    QMenu *menuOf(ScreenCatalog::Folder folder) const;
    void addStartButton(const ScreenCatalog::Entry &entry, QAction *action);
    void buildStatusBar(const QString &engineName);
    void connectActions();
    void connectWindowActions();
    void place(QWidget *form);
    bool closeScreen(int tab);
    void moveBy(int tabs);
    void showOpenScreens();
    /// The screen in front keeps its letters: a menu whose letter it uses has none meanwhile, and is reached by Alt
    /// alone and the arrow keys.
    void yieldMnemonics(QWidget *form);
    void showCompany();
    void showBusy(bool busy);
    void chooseCompany();
    void setUpScale();
    void about();
    /// As an action of this window: what it lets escape is reported.
    void run(const std::function<void()> &action);

    std::unique_ptr<Ui::MainWindow> m_ui;
    QenHost &m_host;
    QString m_engineName;
    QString m_databaseName;
    QHash<QAction *, QString> m_menuTitles; ///< with their mnemonics
    QLabel *m_busy = nullptr;
    QLabel *m_company = nullptr;
    QLabel *m_user = nullptr;
};
