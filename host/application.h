// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

/// The toolkit's application with the program's look, language and last net.
class Application : public QApplication
{
    Q_OBJECT

public:
    Application(int &argc, char **argv);
    ~Application() override;

    /// What a handler lets escape is reported here, and the program goes on.
    bool notify(QObject *receiver, QEvent *event) override;

    /// Name, version and language: what also a run without any window needs.
    static void describe();
};
