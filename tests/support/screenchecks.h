// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/messageanswers.h"

#include <QLineEdit>
#include <QTableView>
#include <QTest>

/// What tests of several screens ask of their boxes and searches.
namespace ScreenChecks {

/// The next box is an information with the screen's caption as its title and nothing but OK, which is clicked.
inline void expectInformation(MessageAnswers &answers, const QString &caption, const QString &text)
{
    answers.expectWindow(
        [text](QWidget *window) {
            auto *box = qobject_cast<QMessageBox *>(window);
            QVERIFY(box);
            QCOMPARE(box->text(), text);
            QCOMPARE(box->icon(), QMessageBox::Information);
            QCOMPARE(box->standardButtons(), QMessageBox::Ok);
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        },
        caption);
}

/// The next box is a failure's, with the screen's caption as its title and the engine's words behind "Detalhes".
inline void expectFailure(MessageAnswers &answers, const QString &caption, const QString &text)
{
    answers.expectWindow(
        [text](QWidget *window) {
            auto *box = qobject_cast<QMessageBox *>(window);
            QVERIFY(box);
            QCOMPARE(box->text(), text);
            QCOMPARE(box->icon(), QMessageBox::Critical);
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        },
        caption);
}

/// The field of a search in which its user types.
inline QLineEdit *typedIn(QWidget *search)
{
    return search->findChild<QLineEdit *>(QStringLiteral("text"));
}

/// The first column of the search that comes next goes into `codes`, and Esc leaves it.
inline void expectSearchAndLeave(MessageAnswers &answers, QStringList *codes, const QString &title = {})
{
    answers.expectWindow(
        [codes](QWidget *window) {
            const auto *rows = window->findChild<QTableView *>();
            QVERIFY(rows);
            codes->clear();
            for (int row = 0; row < rows->model()->rowCount(); ++row)
                codes->append(rows->model()->index(row, 0).data().toString());
            QTest::keyClick(typedIn(window), Qt::Key_Escape);
        },
        title);
}

/// The text is typed in the search that comes next, and Enter takes what it finds.
inline void expectSearchAndTake(MessageAnswers &answers, const QString &text, const QString &title = {})
{
    answers.expectWindow(
        [text](QWidget *window) {
            QTest::keyClicks(typedIn(window), text);
            QTest::keyClick(typedIn(window), Qt::Key_Return);
        },
        title);
}

} // namespace ScreenChecks
