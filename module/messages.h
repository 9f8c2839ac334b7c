// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QWidget;

/// Boxes that screens show; each is titled with the screen's caption unless a title is given.
namespace Messages {

void inform(QWidget *form, const QString &text);
/// True for Yes alone. No is the default button unless told otherwise.
bool ask(QWidget *form, const QString &text, const QString &title = {}, bool yesIsDefault = false);
/// "Deseja eliminar este Registro?", titled "Eliminação de Registro".
bool askDelete(QWidget *form);

} // namespace Messages
