// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/logfile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

using namespace Qt::StringLiterals;

LogFile::LogFile(const QString &path)
    : m_path(path)
{
}

QString LogFile::previousPath() const
{
    return m_path + u".1"_s;
}

void LogFile::write(const QString &text)
{
    const QString moment = QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
    const QString entry = moment + u' ' + QString(text.trimmed()).replace(u'\n', u"\n    "_s) + u'\n';
    if (QFileInfo(m_path).size() > fullAt) {
        QFile::remove(previousPath());
        QFile::rename(m_path, previousPath());
    }
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append) || file.write(entry.toUtf8()) < 0)
        std::fputs(qUtf8Printable(entry), stderr);
}
