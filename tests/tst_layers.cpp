// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Source
{
    QString path; ///< from the checkout's root
    QStringList includes; ///< of the program's own files, as they are written
};

const QStringList screenFolders{u"production"_s, u"registries"_s, u"invoicing"_s, u"reports"_s};

QString topFolder(const QString &path)
{
    return path.section(u'/', 0, 0);
}

bool isIn(const QString &path, const QStringList &folders)
{
    return folders.contains(topFolder(path));
}

/// The unit that a file belongs to: its name without ending.
QString unitOf(const QString &path)
{
    return path.section(u'/', -1).section(u'.', 0, 0);
}

QStringList includesOf(const QString &file)
{
    static const QRegularExpression pattern(
        u"^\\s*#\\s*include\\s+\"([^\"]+)\""_s, QRegularExpression::MultilineOption);
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(file));
    const QString text = QString::fromUtf8(source.readAll());
    QStringList includes;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext())
        includes.append(matches.next().captured(1));
    return includes;
}

const QVector<Source> &sources()
{
    static const QVector<Source> all = [] {
        const QDir root(QString::fromUtf8(QEN_SOURCE_DIR));
        QVector<Source> found;
        QStringList folders = screenFolders;
        folders << u"module"_s << u"host"_s << u"demo"_s << u"bench"_s << u"tests"_s;
        for (const QString &folder : folders) {
            QDirIterator files(
                root.filePath(folder), {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QString file = files.next();
                found.append({root.relativeFilePath(file), includesOf(file)});
            }
        }
        return found;
    }();
    return all;
}

/// Every include of the files that `from` holds for must be one that `may` holds for.
void check(
    const std::function<bool(const QString &)> &from, const std::function<bool(const Source &, const QString &)> &may)
{
    int checked = 0;
    for (const Source &source : sources()) {
        if (!from(source.path))
            continue;
        ++checked;
        for (const QString &include : source.includes) {
            const bool generated = include.startsWith(u"ui_"_s) || include.endsWith(u".moc"_s);
            QVERIFY2(generated || may(source, include), qPrintable(source.path + u" includes "_s + include));
        }
    }
    QVERIFY(checked > 0);
}

} // namespace

/// Who may know whom.
class TestLayers : public QObject
{
    Q_OBJECT

private slots:
    void includesAreWrittenFromTheRoot();
    void theServicesKnowOnlyThemselves();
    void theSchemaKnowsOnlyTheServices();
    void theModuleKnowsNoScreenAndNoHost();
    void aScreenKnowsTheModuleAndItsOwnFolder();
    void aScreenKnowsNoOtherScreen();
    void theHostKnowsOnlyServicesAndSchema();
    void demonstrationDataKnowsNoScreen();
    void nothingKnowsTheTests();
    void everySourceSaysItsLicence();
};

void TestLayers::includesAreWrittenFromTheRoot()
{
    const QDir root(QString::fromUtf8(QEN_SOURCE_DIR));
    check([](const QString &) { return true; },
        [&](const Source &, const QString &include) { return root.exists(include); });
}

void TestLayers::theServicesKnowOnlyThemselves()
{
    check([](const QString &path) { return path.startsWith(u"module/host_services/"_s); },
        [](const Source &, const QString &include) { return include.startsWith(u"module/host_services/"_s); });
}

void TestLayers::theSchemaKnowsOnlyTheServices()
{
    check([](const QString &path) { return path.startsWith(u"module/schema/"_s); },
        [](const Source &, const QString &include) {
            return include.startsWith(u"module/schema/"_s) || include.startsWith(u"module/host_services/"_s);
        });
}

void TestLayers::theModuleKnowsNoScreenAndNoHost()
{
    check([](const QString &path) { return topFolder(path) == u"module"_s; },
        [](const Source &, const QString &include) { return topFolder(include) == u"module"_s; });
}

void TestLayers::aScreenKnowsTheModuleAndItsOwnFolder()
{
    check([](const QString &path) { return isIn(path, screenFolders); },
        [](const Source &source, const QString &include) {
            return topFolder(include) == u"module"_s || topFolder(include) == topFolder(source.path);
        });
}

/// A unit with a .ui file is a screen. A long one may have more files, whose names begin with its own.
void TestLayers::aScreenKnowsNoOtherScreen()
{
    const QDir root(QString::fromUtf8(QEN_SOURCE_DIR));
    const auto isScreen = [&](const QString &path) {
        return isIn(path, screenFolders) && root.exists(path.section(u'.', 0, 0) + u".ui"_s);
    };
    check([&](const QString &path) { return isIn(path, screenFolders); },
        [&](const Source &source, const QString &include) {
            const bool partOfIt = !isScreen(source.path) && unitOf(source.path).startsWith(unitOf(include));
            return !isScreen(include) || unitOf(include) == unitOf(source.path) || partOfIt;
        });
}

void TestLayers::theHostKnowsOnlyServicesAndSchema()
{
    check([](const QString &path) { return topFolder(path) == u"host"_s; },
        [](const Source &, const QString &include) {
            return isIn(include, {u"host"_s, u"demo"_s}) || include.startsWith(u"module/host_services/"_s)
                || include.startsWith(u"module/schema/"_s);
        });
}

void TestLayers::demonstrationDataKnowsNoScreen()
{
    check([](const QString &path) { return topFolder(path) == u"demo"_s; },
        [](const Source &, const QString &include) {
            return topFolder(include) == u"demo"_s || include.startsWith(u"module/host_services/"_s)
                || include.startsWith(u"module/schema/"_s);
        });
}

void TestLayers::nothingKnowsTheTests()
{
    check([](const QString &path) { return topFolder(path) != u"tests"_s; },
        [](const Source &, const QString &include) { return topFolder(include) != u"tests"_s; });
}

void TestLayers::everySourceSaysItsLicence()
{
    for (const Source &source : sources()) {
        QFile file(QString::fromUtf8(QEN_SOURCE_DIR) + u'/' + source.path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray head = file.read(200);
        QVERIFY2(head.startsWith("// SPDX-FileCopyrightText: ")
                && head.contains("\n// SPDX-License-Identifier: GPL-3.0-or-later\n"),
            qPrintable(source.path));
    }
}

QTEST_APPLESS_MAIN(TestLayers)
#include "tst_layers.moc"
