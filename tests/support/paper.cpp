// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/paper.h"

#include "host/qenhost.h"
#include "module/host_services/errors.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(-1);
    if (process.error() == QProcess::FailedToStart)
        throw EQen(u"%1 is not installed"_s.arg(program));
    return process.readAllStandardOutput();
}

} // namespace

Paper::Paper(QenHost &host)
    : m_host(host)
    , m_desk(folder())
{
    m_host.setReportDesk(&m_desk);
}

Paper::~Paper()
{
    m_host.setReportDesk(nullptr);
}

QString Paper::folder() const
{
    const QString kept = qEnvironmentVariable("QEN_PAPER");
    return kept.isEmpty() ? m_folder.path() : kept;
}

QString Paper::file() const
{
    if (m_desk.files().isEmpty())
        throw EQen(u"nothing was printed"_s);
    return m_desk.files().last();
}

int Paper::pages() const
{
    const QString info = QString::fromUtf8(outputOf(u"pdfinfo"_s, {file()}));
    static const QRegularExpression number(u"Pages:\\s+(\\d+)"_s);
    return number.match(info).captured(1).toInt();
}

QString Paper::text(int page) const
{
    QStringList arguments{u"-layout"_s};
    if (page > 0)
        arguments << u"-f"_s << QString::number(page) << u"-l"_s << QString::number(page);
    return QString::fromUtf8(outputOf(u"pdftotext"_s, arguments << file() << u"-"_s));
}

QString Paper::flatText(int page) const
{
    static const QRegularExpression blanks(u"[ \\t]+"_s);
    return text(page).replace(blanks, u" "_s);
}

QStringList Paper::barcodes(int page) const
{
    const QString image = m_folder.filePath(u"page"_s);
    const QString number = QString::number(page);
    outputOf(u"pdftoppm"_s,
        {u"-png"_s, u"-singlefile"_s, u"-r"_s, u"300"_s, u"-f"_s, number, u"-l"_s, number, file(), image});
    const QByteArray found = outputOf(u"zbarimg"_s, {u"--quiet"_s, image + u".png"_s});
    QStringList codes = QString::fromUtf8(found).split(u'\n', Qt::SkipEmptyParts);
    codes.sort();
    return codes;
}

QByteArray Paper::bytes() const
{
    QFile sent(file().chopped(3) + u"prn"_s);
    if (!sent.open(QIODevice::ReadOnly))
        throw EQen(u"nothing was sent"_s);
    return sent.readAll();
}
