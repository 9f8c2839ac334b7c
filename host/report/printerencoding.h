// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

/// Turns texts into the bytes of a printer's character set.
class PrinterEncoding
{
public:
    /// A name as iconv knows it: "CP850", "ISO-8859-1", "UTF-8"; empty is CP850. Throws EQen when there is none such.
    explicit PrinterEncoding(const QString &name);
    ~PrinterEncoding();
    Q_DISABLE_COPY_MOVE(PrinterEncoding)

    /// Characters that it lacks become their plain letter, else "?": a line keeps its columns.
    QByteArray encoded(const QString &text) const;

private:
    bool convert(QStringView text, QByteArray &bytes) const;

    void *m_converter;
};
