// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/packageloader.h"

#include "module/host_services/errors.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// Beside the program as it was built or unpacked, else where it is installed.
QString fileOf(const QString &name)
{
    for (const QString &folder : {QCoreApplication::applicationDirPath() + u"/../lib"_s, u"/usr/lib/qen"_s}) {
        const QString file = u"%1/%2.so"_s.arg(folder, name);
        if (QFileInfo::exists(file))
            return QFileInfo(file).canonicalFilePath();
    }
    return {};
}

} // namespace

PackageLoader::PackageLoader(const QString &name)
    : m_name(name)
{
    // Its code stays in memory: the toolkit keeps pointers to the descriptions of classes that it has seen.
    m_library.setLoadHints(QLibrary::PreventUnloadHint);
}

PackageLoader::~PackageLoader()
{
    while (m_loads > 0)
        unload();
}

void PackageLoader::open()
{
    const QString file = fileOf(m_name);
    if (file.isEmpty())
        throw EQen(u"O pacote \"%1\" não está instalado."_s.arg(m_name));
    m_library.setFileName(file);
    if (!m_library.load())
        throw EQen(u"O pacote \"%1\" não pôde ser carregado."_s.arg(m_name), m_library.errorString());
    const QByteArray name = m_name.toLatin1();
    m_initialize = m_library.resolve(QByteArray(name + "_initialize").constData());
    m_finalize = m_library.resolve(QByteArray(name + "_finalize").constData());
    if (!m_initialize || !m_finalize)
        throw EQen(u"O arquivo \"%1\" não é um pacote deste programa."_s.arg(file), m_library.errorString());
}

void PackageLoader::load()
{
    if (!m_finalize)
        open();
    m_initialize();
    ++m_loads;
}

void PackageLoader::unload()
{
    if (m_loads == 0)
        return;
    --m_loads;
    m_finalize();
}
