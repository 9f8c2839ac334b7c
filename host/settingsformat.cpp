// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/settingsformat.h"

#include <QFile>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView explanation = uR"(# Configuração do qen nesta estação.
# As linhas que começam com # são explicações. Linhas acrescentadas por você com # não são mantidas.
#
# [Banco]            Sem "banco", o programa abre os dados de demonstração.
# motor=firebird     "firebird" (arquivo local), "firebird-servidor" ou "postgresql"
# banco=             arquivo local (caminho completo), ou nome ou caminho do banco no servidor
# servidor=          nome ou endereço do servidor; no PostgreSQL também a pasta do soquete
# porta=             vazia: a porta usual do motor
# usuario=           usuário do banco de dados (não o do programa)
# senha=
#
# [Pastas]
# imagens=           imagens dos materiais, <código>.png, .jpg, .jpeg, .bmp ou .svg; vazia: a pasta "imagens" dos dados
# leiautes=          leiautes próprios de relatórios e etiquetas; vazia: a pasta "leiautes" dos dados
# planilhas=         a pasta em que uma lista foi exportada por último; o programa a grava aqui
# relatorios=        a pasta em que um relatório foi gravado por último; o programa a grava aqui
#
# [Grades]           Ordem e larguras das colunas das listas; o programa grava aqui o que foi arrastado.
#
# [Impressoras]      Nome da impressora como o sistema a conhece; vazia: a impressora padrão do sistema.
# padrao=            para tudo o que não tem impressora própria
#                    "PDF" grava arquivos na pasta "impressos" dos dados; "arquivo:/dev/usb/lp0" manda textos
#                    direto a uma impressora matricial ou de etiquetas
# WEtqBarra=         para um só relatório ou etiqueta, pelo nome do seu leiaute
#
# [Codigos]          Códigos da impressora matricial, em hexadecimal; para uma só impressora, [Codigos <nome>].
# condensado=0F      também: fim-condensado, negrito, fim-negrito, inicio, pagina
#
# [Kelta]            A balança; o programa grava aqui o que foi escolhido em "Configurar balança".
)";

struct Line
{
    QString group; ///< the line is the head of this group
    QString key; ///< or a value of this key
    QString value;
};

/// Empty for what is no line of a settings file; an empty Line for blanks and comments.
std::optional<Line> parsed(const QString &text)
{
    const QString line = text.trimmed();
    if (line.isEmpty() || line.startsWith(u'#') || line.startsWith(u';'))
        return Line{};
    if (line.startsWith(u'[') && line.endsWith(u']') && line.size() > 2)
        return Line{line.mid(1, line.size() - 2).trimmed(), {}, {}};
    const qsizetype sign = line.indexOf(u'=');
    if (sign < 1)
        return {};
    return Line{{}, line.left(sign).trimmed(), line.mid(sign + 1).trimmed()};
}

bool readFile(QIODevice &device, QSettings::SettingsMap &map)
{
    QString group;
    while (!device.atEnd()) {
        const std::optional<Line> line = parsed(QString::fromUtf8(device.readLine()));
        if (!line)
            return false;
        if (!line->group.isEmpty())
            group = line->group + u'/';
        else if (!line->key.isEmpty())
            map.insert(group + line->key, line->value);
    }
    return true;
}

bool writeFile(QIODevice &device, const QSettings::SettingsMap &map)
{
    QByteArray text = SettingsFormat::emptyFile();
    QString group;
    // Ordered by name, so the values of a group follow each other; those without a group cannot come after one.
    for (const bool grouped : {false, true}) {
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            const qsizetype slash = entry.key().indexOf(u'/');
            if ((slash >= 0) != grouped)
                continue;
            if (grouped && group != entry.key().left(slash)) {
                group = entry.key().left(slash);
                text += "\n[" + group.toUtf8() + "]\n";
            }
            const QString value = entry.value().toString().replace(u'\n', u' ');
            text += entry.key().mid(slash + 1).toUtf8() + '=' + value.toUtf8() + '\n';
        }
    }
    return device.write(text) == text.size();
}

} // namespace

QSettings::Format SettingsFormat::format()
{
    static const QSettings::Format registered = QSettings::registerFormat(u"ini"_s, readFile, writeFile);
    return registered;
}

QByteArray SettingsFormat::emptyFile()
{
    return explanation.toUtf8();
}

int SettingsFormat::firstBadLine(const QString &file)
{
    QFile device(file);
    if (!device.open(QIODevice::ReadOnly))
        return 0;
    for (int number = 1; !device.atEnd(); ++number) {
        if (!parsed(QString::fromUtf8(device.readLine())))
            return number;
    }
    return 0;
}
