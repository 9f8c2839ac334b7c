// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class Clockwork;

/// The operator's part, which is not measured: as soon as a message box comes into being the clock stands still, "Sim"
/// or "OK" is pressed, and the clock goes on when the box is gone. What the box costs the program is left out with what
/// it costs the operator.
class Answers : public QObject
{
    Q_OBJECT

public:
    explicit Answers(Clockwork &clock);
    ~Answers() override;

    int given() const { return m_given; }

signals:
    void asked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void answer(QObject *window);
    void partGone();

    Clockwork &m_clock;
    bool m_paused = false;
    int m_parts = 0; ///< of the box, that are still there
    int m_given = 0;
};
