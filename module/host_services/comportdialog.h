// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/comport.h"

#include <QDialog>

#include <memory>

namespace Ui {
class ComPortDialog;
}

/// "Configuração da Balança": the settings of the port, and a button that reads the scale once with what stands on it.
class ComPortDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ComPortDialog(const ComPortSettings &settings, QWidget *parent = nullptr);
    ~ComPortDialog() override;

    ComPortSettings settings() const;

    void accept() override;
    /// Does nothing while the scale is read.
    void reject() override;

private:
    void showSettings(const ComPortSettings &settings);
    bool checkFields();
    void test();
    void showReading(const QByteArray &received, const QString &text);
    void showMessage(const QString &text);

    std::unique_ptr<Ui::ComPortDialog> ui;
};
