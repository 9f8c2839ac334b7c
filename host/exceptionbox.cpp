// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/exceptionbox.h"

#include "module/host_services/errors.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

const QString generalSentence = QStringLiteral("Ocorreu um erro inesperado. A operação foi interrompida.");

/// The toolkit renames the button whenever it is pressed, so it is named again after each press.
void nameDetailsButton(QMessageBox &box)
{
    for (QAbstractButton *button : box.buttons()) {
        if (box.buttonRole(button) != QMessageBox::ActionRole)
            continue;
        const auto name = [button] { button->setText(u"Detalhes..."_s); };
        name();
        QObject::connect(button, &QAbstractButton::clicked, button, name, Qt::QueuedConnection);
    }
}

} // namespace

ExceptionText ExceptionText::of(const std::exception_ptr &error)
{
    try {
        if (error)
            std::rethrow_exception(error);
    } catch (const EQen &known) {
        return {known.sentence(), known.details()};
    } catch (const std::exception &other) {
        return {generalSentence, QString::fromLocal8Bit(other.what())};
    } catch (...) {
        return {generalSentence, {}};
    }
    return {generalSentence, {}};
}

void showExceptionBox(QWidget *form, const ExceptionText &text)
{
    QWidget *window = form && form->isVisible() ? form->window() : QApplication::activeWindow();
    const QString formTitle = form ? form->windowTitle() : QString();
    const QString title = formTitle.isEmpty() ? QApplication::applicationDisplayName() : formTitle;
    // On the heap behind a guard: the window may go, and the box with it, while the box is open.
    const QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Critical, title, text.sentence, QMessageBox::Ok, window);
    box->setObjectName(u"exceptionBox"_s);
    box->setTextFormat(Qt::PlainText);
    box->setWindowModality(Qt::ApplicationModal);
    if (!text.details.isEmpty()) {
        box->setDetailedText(text.details);
        nameDetailsButton(*box);
    }
    box->exec();
    delete box;
}
