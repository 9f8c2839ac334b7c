// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"

#include <memory>

namespace Ui {
class fmMalFatNF;
}
class TTIQuery;
class Unit;

/// Marks whether the fabric of an outbound invoice has been billed; its other items are left alone.
class TfmMalFatNF : public TForm
{
    Q_OBJECT

public:
    TfmMalFatNF();
    ~TfmMalFatNF() override;

    Q_INVOKABLE void EdtNotaExit();
    Q_INVOKABLE void BitBtn2Click(); ///< "&Atualizar"
    Q_INVOKABLE void BitBtn1Click(); ///< "&Fechar"

protected:
    void FormCreate() override;
    void FormShow() override;

private:
    QString invoice() const;
    QString markedAs(const QString &mark) const;
    int updateMark(const QString &mark);
    void ListaItens();

    std::unique_ptr<Ui::fmMalFatNF> m_ui;
    TTIQuery *QryItens;
};

extern QPointer<TfmMalFatNF> fmMalFatNF;

namespace Malfatnf {
Unit &unit();
}
