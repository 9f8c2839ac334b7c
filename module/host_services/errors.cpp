// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/errors.h"

using namespace Qt::StringLiterals;

namespace {

QString sentenceFor(EDatabaseError::Category category)
{
    switch (category) {
    case EDatabaseError::Category::Connection:
        return u"A conexão com o banco de dados falhou."_s;
    case EDatabaseError::Category::Unique:
        return u"Já existe um registro com esta chave. Nada foi gravado."_s;
    case EDatabaseError::Category::Conflict:
        return u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s;
    case EDatabaseError::Category::Statement:
        break;
    }
    return u"O banco de dados recusou a operação. Nada foi gravado."_s;
}

} // namespace

EQen::EQen(const QString &sentence, const QString &details)
    : std::runtime_error((details.isEmpty() ? sentence : sentence + u'\n' + details).toStdString())
    , m_sentence(sentence)
    , m_details(details)
{
}

EDatabaseError::EDatabaseError(
    Category category, const QString &nativeCode, const QString &engineText, const QString &statement)
    : EQen(sentenceFor(category),
        statement.isEmpty() ? u"%1 [%2]"_s.arg(engineText, nativeCode)
                            : u"%1 [%2]\n\n%3"_s.arg(engineText, nativeCode, statement))
    , m_category(category)
    , m_nativeCode(nativeCode)
{
}
