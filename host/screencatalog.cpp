// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/screencatalog.h"

#include "module/host_services/classregistry.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using namespace ScreenCatalog;

const QList<Entry> &known()
{
    static const QList<Entry> entries{
        {u"TfmMalhaOFBaixaBarra"_s, Folder::Production, u"scale"_s, u" (código de barras)"_s, u"Baixa"_s, {}},
        {u"TfmMalhaOF"_s, Folder::Production, u"order"_s, {}, u"Ordem"_s, {}},
        {u"TfmMalhaOFBaixa"_s, Folder::Production, u"roll"_s, u" (manual)"_s, {}, {}},
        {u"TfmBaixaOF"_s, Folder::Production, u"confirm"_s, {}, {}, {}},
        {u"TfmAcertoMalharia"_s, Folder::Production, u"adjust"_s, {}, {}, {}},
        {u"TfmCadRaport"_s, Folder::Registries, u"yarn"_s, {}, {}, {}},
        {u"TfmCadAlimentador"_s, Folder::Registries, u"settings"_s, {}, {}, {}},
        {u"TfmCadDefMalha"_s, Folder::Registries, u"defect"_s, {}, {}, {}},
        {u"TfmMatTabPreco"_s, Folder::Registries, u"price"_s, {}, {}, {}},
        {u"TfmNFTerceiros"_s, Folder::Invoicing, u"invoice"_s, {}, u"Entrada"_s, {}},
        {u"TfmMalLibFat"_s, Folder::Invoicing, u"stock"_s, {}, u"Liberação"_s, {}},
        {u"TfmMalFatNF"_s, Folder::Invoicing, u"label"_s, {}, {}, {}},
        {u"TfmRelOrdFab"_s, Folder::Reports, u"report"_s, {}, {}, {}},
        {u"TfmRelPend"_s, Folder::Reports, u"report"_s, {}, {}, {}},
        {u"TfmRelProd"_s, Folder::Reports, u"report"_s, {}, {}, {}},
        {u"TfmRelEstoqueMat"_s, Folder::Reports, u"report"_s, {}, {}, {}},
        {u"TfmRelMalSaidas"_s, Folder::Reports, u"report"_s, {}, {}, {}},
        {u"TfmRelDocto"_s, Folder::Reports, u"report"_s, {}, {}, {}},
        {u"TfmRelRegistros"_s, Folder::Reports, u"report"_s, {}, {}, {}},
        {u"TfmRelMatTabPre"_s, Folder::Reports, u"report"_s, {}, {}, {}},
    };
    return entries;
}

} // namespace

QList<Entry> ScreenCatalog::registered()
{
    QList<Entry> result;
    QStringList rest = ClassRegistry::names();
    for (Entry entry : known()) {
        if (const ScreenClass *screen = ClassRegistry::find(entry.className)) {
            entry.caption = screen->caption;
            result.append(entry);
            rest.removeOne(entry.className);
        }
    }
    for (const QString &name : rest)
        result.append({name, Folder::Others, u"order"_s, {}, {}, ClassRegistry::find(name)->caption});
    return result;
}

QStringList ScreenCatalog::withMnemonics(const QStringList &texts)
{
    QSet<QChar> used;
    QStringList result;
    for (const QString &text : texts) {
        const auto letter = std::find_if(text.begin(), text.end(),
            [&](QChar c) { return c.isLetterOrNumber() && c.unicode() < 128 && !used.contains(c.toLower()); });
        QString marked = QString(text).replace(u'&', u"&&"_s);
        if (letter != text.end()) {
            used.insert(letter->toLower());
            marked.insert(marked.indexOf(*letter), u'&');
        }
        result.append(marked);
    }
    return result;
}
