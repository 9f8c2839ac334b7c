// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The floor of the program's start: a window of the toolkit with nothing in it, which ends when it stands painted.

#include <QApplication>
#include <QWidget>

namespace {

class BareWindow : public QWidget
{
protected:
    void paintEvent(QPaintEvent *) override { QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection); }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    BareWindow window;
    window.resize(480, 320);
    window.show();
    return QApplication::exec();
}
