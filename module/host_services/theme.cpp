// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/theme.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QProxyStyle>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal smallestFont = 10; // points
constexpr int rowRoom = 10; // pixels above and below the text of a grid's row, together

QPalette lightPalette()
{
    const QColor window(0xf4, 0xf3, 0xf0);
    const QColor text(0x26, 0x32, 0x38);
    const QColor pale(0x9e, 0xa7, 0xaa);
    const QColor accent(0x00, 0x79, 0x6b);

    QPalette palette(QColor(0xec, 0xea, 0xe6), window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf3, 0xf7, 0xf6));
    palette.setColor(QPalette::PlaceholderText, pale);
    palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xfd, 0xe7));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, accent);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, pale);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xcf, 0xd8, 0xdc));
    return palette;
}

/// Fusion with rows of a grid just high enough for the font.
class Style : public QProxyStyle
{
public:
    Style()
        : QProxyStyle(u"Fusion"_s)
    {
    }

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        if (metric != PM_HeaderDefaultSectionSizeVertical)
            return QProxyStyle::pixelMetric(metric, option, widget);
        return (widget ? widget->fontMetrics() : QFontMetrics(QApplication::font())).height() + rowRoom;
    }
};

// The arrow of a sorted column is given its width, or it would cover the titles of figures.
// Combo and spin boxes are left to Fusion: a rule for their border would take away their arrows.
constexpr QStringView styleSheet = uR"(
QLineEdit, QPlainTextEdit, QTextEdit {
    border: 1px solid #b5bcbf; border-radius: 3px; padding: 3px 5px; background: #ffffff;
}
QLineEdit:focus, QPlainTextEdit:focus, QTextEdit:focus { border-color: #00796b; }
QLineEdit:read-only, QPlainTextEdit:read-only, QTextEdit:read-only { background: #eae8e4; border-color: #dcd9d4; }
QLineEdit:disabled, QPlainTextEdit:disabled, QTextEdit:disabled {
    background: #f0eeeb; border-color: #dcd9d4; color: #37474f;
}
QLabel:disabled, QGroupBox:disabled { color: #455a64; }
QLineEdit[invalid="true"] { border-color: #c62828; background: #fff5f5; }
QAbstractSpinBox QLineEdit, QComboBox QLineEdit, QTableView QLineEdit { border: none; padding: 0; }
QComboBox, QAbstractSpinBox { min-height: 1.4em; }
QPushButton { padding: 5px 14px; }
QToolButton { padding: 4px; }
QHeaderView::section {
    background: #e6e4df; border: none; border-right: 1px solid #d3d0ca; border-bottom: 1px solid #c7c3bc;
    padding: 4px 6px;
}
QHeaderView::up-arrow, QHeaderView::down-arrow {
    subcontrol-origin: border; subcontrol-position: center right; right: 3px; width: 13px; height: 9px;
}
QTableView { gridline-color: #e3e1dc; border: 1px solid #c7c3bc; qproperty-alternatingRowColors: true; }
QCalendarWidget QTableView { border: none; qproperty-alternatingRowColors: false; }
QCalendarWidget #qt_calendar_navigationbar { background: #e6e4df; }
QCalendarWidget QToolButton { color: #263238; }
)";

} // namespace

void Theme::apply(QApplication &application)
{
    application.setStyle(new Style);
    application.setPalette(lightPalette());
    QFont font = application.font();
    if (font.pointSizeF() < smallestFont)
        font.setPointSizeF(smallestFont);
    application.setFont(font);
    application.setStyleSheet(styleSheet.toString());
}
