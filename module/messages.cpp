// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/messages.h"

#include <QApplication>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

int show(QWidget *form, QMessageBox &box)
{
    // Whoever reads a message is not waiting.
    const bool waiting = QApplication::overrideCursor() != nullptr;
    if (waiting)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    box.setWindowModality(Qt::ApplicationModal);
    if (form)
        box.setParent(form->window(), box.windowFlags());
    const int answer = box.exec();
    box.setParent(nullptr);
    if (waiting)
        QApplication::restoreOverrideCursor();
    return answer;
}

} // namespace

namespace Messages {

void inform(QWidget *form, const QString &text)
{
    QMessageBox box(QMessageBox::Information, form->windowTitle(), text, QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText);
    show(form, box);
}

bool ask(QWidget *form, const QString &text, const QString &title, bool yesIsDefault)
{
    QMessageBox box(
        QMessageBox::Question, title.isEmpty() ? form->windowTitle() : title, text, QMessageBox::Yes | QMessageBox::No);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(yesIsDefault ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return show(form, box) == QMessageBox::Yes;
}

bool askDelete(QWidget *form)
{
    return ask(form, u"Deseja eliminar este Registro?"_s, u"Eliminação de Registro"_s);
}

} // namespace Messages
