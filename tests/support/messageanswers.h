// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <functional>

/// Answers the modal boxes and windows that come up while it lives, in the order in which they are expected, and keeps
/// what they showed. An unexpected one fails the test and is closed; so does an expected one that never came, when the
/// object goes.
///
///     MessageAnswers answers;
///     answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
///     station.click(u"BtExcluir"_s);
class MessageAnswers : public QObject
{
    Q_OBJECT

public:
    struct Shown
    {
        QString title;
        QString text; ///< of a message box; empty for another window
        QString details; ///< behind "Detalhes"
    };

    MessageAnswers();
    ~MessageAnswers() override;

    /// A message box with this text and title (empty: any); its button is clicked.
    MessageAnswers &expect(
        const QString &text, QMessageBox::StandardButton press = QMessageBox::Ok, const QString &title = {});
    /// A message box that gets a key: Enter presses its default button, Esc its escape button.
    MessageAnswers &expectAndType(const QString &text, Qt::Key key, const QString &title = {});
    /// Any modal window; what the function leaves open is closed, and fails the test.
    MessageAnswers &expectWindow(const std::function<void(QWidget *)> &use, const QString &title = {});

    const QList<Shown> &shown() const { return m_shown; }
    bool allCame() const { return m_expected.isEmpty(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Expected
    {
        QString title;
        QString text;
        std::function<void(QWidget *)> use;
    };
    void answer(QWidget *window);
    void compare(const Expected &expected, const Shown &shown);

    QList<Expected> m_expected;
    QList<Shown> m_shown;
};
