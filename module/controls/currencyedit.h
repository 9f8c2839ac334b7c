// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>

/// A field for a number. At rest it shows the number by its mask; while the user is in it, plain with a decimal comma
/// and all selected, so that typing replaces. The comma and the point of the keypad both type the decimal comma. The
/// value is always that of the text as it stands, and keeps the decimals it was given although fewer are shown.
class TCurrencyEdit : public QLineEdit
{
    Q_OBJECT
    /// Mask of Format::number() for the number at rest.
    Q_PROPERTY(QString DisplayFormat READ displayFormat WRITE setDisplayFormat)
    /// How many decimals can be typed and are shown while the user is in the field.
    Q_PROPERTY(int EditDecimals READ editDecimals WRITE setEditDecimals)
    Q_PROPERTY(double Value READ value WRITE setValue NOTIFY valueChanged USER true)

public:
    explicit TCurrencyEdit(QWidget *parent = nullptr);

    QString displayFormat() const { return m_displayFormat; }
    void setDisplayFormat(const QString &mask);

    int editDecimals() const { return m_editDecimals; }
    void setEditDecimals(int decimals);

    /// 0 when the field is empty.
    double value() const { return m_value; }
    /// What is not finite becomes 0.
    void setValue(double value);

signals:
    /// The value became another one, by the user or by the program.
    void valueChanged(double value);
    /// The user typed; `value` is what now stands in the field, changed or not.
    void valueEdited(double value);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void showValue();
    void takeText();

    QString m_displayFormat;
    int m_editDecimals = 3;
    double m_value = 0;
    QString m_shown; ///< the text that showed the value last, and
    double m_shownValue = 0; ///< the value for which it stands, with all its decimals
    bool m_selectOnPress = false; ///< the click that brings the user in selects all
};
