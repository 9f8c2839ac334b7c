// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Texts that are made to do harm are typed into every field of every screen of the package. Screens that are added
// later are found by themselves.

#include "module/controls/currencyedit.h"
#include "module/controls/dateedit.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/classregistry.h"
#include "module/recordbar.h"
#include "module/schema/tables.h"
#include "tests/module/anyanswers.h"
#include "tests/module/hostilescreens.h"
#include "tests/support/engines.h"
#include "tests/support/keys.h"

#include <QAbstractSpinBox>
#include <QClipboard>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList &texts()
{
    static const QStringList all{
        u"'; DROP TABLE X; --"_s,
        u"\"' OR ''='"_s,
        u"%_%' ESCAPE '%"_s,
        u"{OF_MALHA} {x"_s,
        u"\\'\\\\' \\n"_s,
        QString::fromUtf8("a🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶🧶"),
        u"a\x01\t\x1b\x7f\r\nb\u2028c\u00a0d\ufffe"_s + QChar(0) + u"'e"_s,
        u"x'"_s.repeated(5000),
        u"-99999999999999999999,99999999"_s,
        u"99/99/9999"_s,
        u"01/01/0001"_s,
    };
    return all;
}

/// Numbers and dates let only a few characters in.
const QStringList &textsOfFigures()
{
    static const QStringList all{
        u"'; 1 --"_s, u"-99999999999999999999,99999999"_s, u"0"_s, u"99/99/9999"_s, u"01/01/0001"_s};
    return all;
}

/// What an engine can hold of a text: neither NUL nor half a character.
QString holdable(const QString &text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (pair)
            result += text[i++];
        else if (text[i].isSurrogate() || text[i].isNull())
            continue;
        result += text[i];
    }
    return result;
}

/// The rows of all tables, by physical name, without an order.
using Rows = QMap<QString, QStringList>;

Rows allRows(TestDatabase &database)
{
    Rows result;
    const Save reading(database.connection()); // one transaction for all: they cost more than the rows
    for (const Schema::Table &table : Schema::allTables()) {
        for (const QString &suffix : table.perCompany ? QStringList{u"_001"_s, u"_002"_s} : QStringList{QString()}) {
            QStringList rows = database.rows(u"SELECT * FROM "_s + table.name + suffix);
            std::sort(rows.begin(), rows.end());
            result.insert(table.name + suffix, rows);
        }
    }
    return result;
}

/// The rows of `of` that `without` lacks.
QStringList difference(const QStringList &of, const QStringList &without)
{
    QStringList result;
    std::set_difference(of.begin(), of.end(), without.begin(), without.end(), std::back_inserter(result));
    return result;
}

bool hasCell(const QString &row, const QString &text)
{
    return (u'|' + row + u'|').contains(u'|' + text + u'|');
}

QString shortened(const QString &text)
{
    return QString(text).left(60).replace(QChar(0), u'0').simplified();
}

/// Why the box is none that a mill should ever see; empty when it is harmless.
QString faultOf(const AnyAnswers::Said &said)
{
    // Of the engines' own words, only that a value does not fit.
    static const QRegularExpression doesNotFit(
        u"truncat|too long|overflow|out of range|exceeds|numeric value"_s, QRegularExpression::CaseInsensitiveOption);
    if (said.text.startsWith(u"Ocorreu um erro inesperado"_s))
        return u"an exception escaped: "_s + said.details.left(200);
    if (said.text.startsWith(u"O banco de dados recusou"_s) && !doesNotFit.match(said.details).hasMatch())
        return u"the engine says: "_s + said.details.left(300);
    return {};
}

/// A place in which people type.
struct Field
{
    QString name;
    QString column; ///< of a grid's cell; empty for a field
    bool figure = false;
};

/// One screen in one state, attacked field by field.
class Attack
{
public:
    explicit Attack(const HostileScreen &screen)
        : m_screen(screen)
        , m_station(Engines::current())
    {
    }

    QStringList run()
    {
        prepare();
        const QList<Field> fields = findFields();
        for (const Field &field : fields) {
            for (const QString &text : field.figure ? textsOfFigures() : texts())
                attack(field, text);
        }
        closeScreen();
        m_where = u"all in all"_s;
        if (!fields.isEmpty() && m_letIn == 0)
            fault(u"no text was let in anywhere"_s);
        if (!m_screen.saved.isEmpty() && m_saves == 0)
            fault(u"nothing was ever saved"_s);
        qInfo("%lld fields, %d texts let in, %d saves, %d boxes", fields.size(), m_letIn, m_saves, m_boxes);
        return m_faults;
    }

private:
    void prepare();
    void closeScreen();
    QList<Field> findFields() const;
    void addCells(TDBGrid *grid, QList<Field> &fields) const;
    bool reveal(QWidget *widget) const;
    QWidget *editorOf(const Field &field);
    QString put(QWidget *editor, const QString &text);
    void attack(const Field &field, const QString &text);
    void compare(const Field &field, const QString &letIn, bool changed);
    bool isStored(const Field &field) const;
    void fault(const QString &what) { m_faults.append(m_where + u": "_s + what); }

    HostileScreen m_screen;
    TestStation m_station;
    AnyAnswers m_answers;
    Rows m_before;
    bool m_touched = true; ///< the rows are no longer those that the screen is attacked over
    QString m_where;
    QStringList m_faults;
    int m_letIn = 0;
    int m_saves = 0;
    int m_boxes = 0;
};

void Attack::prepare()
{
    closeScreen();
    if (m_touched) {
        Save save(m_station.database.connection());
        for (const QString &table : m_screen.saved)
            m_station.database.run(u"DELETE FROM {%1}"_s.arg(table));
        if (m_screen.rows)
            m_screen.rows(m_station.database);
        save.CommitRetaining();
        m_touched = false;
    }
    m_screen.open ? m_screen.open(m_station) : static_cast<void>(m_station.open(m_screen.name));
    if (m_screen.edit)
        m_screen.edit(m_station);
    m_before = allRows(m_station.database);
    m_answers.take();
}

void Attack::closeScreen()
{
    m_station.closeForm();
    m_answers.take();
}

/// Turns the pages before the widget. False when it cannot be typed in now.
bool Attack::reveal(QWidget *widget) const
{
    for (QWidget *page = widget; page && page != m_station.form(); page = page->parentWidget()) {
        auto *stack = page->parentWidget() ? page->parentWidget()->parentWidget() : nullptr;
        if (auto *pages = qobject_cast<QTabWidget *>(stack); pages && pages->indexOf(page) >= 0) {
            if (!pages->isTabEnabled(pages->indexOf(page)))
                return false;
            pages->setCurrentWidget(page);
        }
    }
    return widget->isVisible() && widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus;
}

QList<Field> Attack::findFields() const
{
    QList<Field> fields;
    for (QWidget *widget : m_station.form()->findChildren<QWidget *>()) {
        if (auto *grid = qobject_cast<TDBGrid *>(widget); grid && reveal(grid)) {
            addCells(grid, fields);
            continue;
        }
        auto *line = qobject_cast<QLineEdit *>(widget);
        auto *plain = qobject_cast<QPlainTextEdit *>(widget);
        auto *choice = qobject_cast<QComboBox *>(widget);
        const bool part = line
            && (qobject_cast<QAbstractSpinBox *>(line->parentWidget())
                || qobject_cast<QComboBox *>(line->parentWidget()));
        const bool typedIn = (line && !part && !line->isReadOnly()) || (plain && !plain->isReadOnly())
            || qobject_cast<QAbstractSpinBox *>(widget) || (choice && choice->isEditable());
        if (typedIn && reveal(widget))
            fields.append({widget->objectName(), {},
                qobject_cast<TCurrencyEdit *>(widget) || qobject_cast<TDateEdit *>(widget)
                    || qobject_cast<QAbstractSpinBox *>(widget)});
    }
    return fields;
}

void Attack::addCells(TDBGrid *grid, QList<Field> &fields) const
{
    const QAbstractItemModel *model = grid->model();
    for (int column = 0; model->rowCount() > 0 && column < model->columnCount(); ++column) {
        const QModelIndex cell = model->index(0, column);
        if (model->flags(cell) & Qt::ItemIsEditable)
            fields.append({grid->objectName(), QString::number(column),
                bool(cell.data(Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight)});
    }
}

/// What takes the keys, in focus; null when the field cannot be typed in any more.
QWidget *Attack::editorOf(const Field &field)
{
    auto *widget = m_station.child(field.name);
    if (!reveal(widget))
        return nullptr;
    m_station.form()->activateWindow();
    if (!QTest::qWaitForWindowActive(m_station.form()))
        return nullptr;
    widget->setFocus(Qt::TabFocusReason);
    if (auto *grid = qobject_cast<TDBGrid *>(widget)) {
        grid->setCurrentIndex(grid->model()->index(0, field.column.toInt()));
        QTest::keyClick(grid, Qt::Key_F2);
    }
    return QApplication::focusWidget();
}

QString textOf(const QWidget *editor)
{
    if (const auto *plain = qobject_cast<const QPlainTextEdit *>(editor))
        return plain->toPlainText();
    const auto *line = qobject_cast<const QLineEdit *>(editor);
    return line ? line->text() : editor->findChild<QLineEdit *>()->text();
}

/// Types over what stands there, by keys where they can say it; what the control let in.
QString Attack::put(QWidget *editor, const QString &text)
{
    const bool byKeys = text.size() < 100
        && std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint() && !c.isSurrogate(); });
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    if (byKeys) {
        Keys::type(editor, text);
    } else {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(editor, Qt::Key_V, Qt::ControlModifier);
    }
    return textOf(editor);
}

void Attack::attack(const Field &field, const QString &text)
{
    m_where = u"%1%2 with \"%3\""_s.arg(field.name, field.column, shortened(text));
    if (!m_station.form())
        prepare();
    QPointer<QWidget> editor = editorOf(field);
    if (!editor) {
        fault(u"it cannot be typed in"_s);
        prepare();
        return;
    }
    const QWidget *widget = m_station.child(field.name);
    const bool within = widget->isAncestorOf(editor);
    if (field.column.isEmpty() ? !within && editor != widget : !within) {
        fault(u"it does not get the focus"_s);
        prepare();
        return;
    }
    const QString stood = textOf(editor);
    const QString letIn = put(editor, text);
    if (letIn == stood) { // nothing was let in: the next text comes over what stands there
        if (!field.column.isEmpty())
            QTest::keyClick(editor, Qt::Key_Escape);
        return;
    }
    QTest::keyClick(editor, field.column.isEmpty() ? Qt::Key_Tab : Qt::Key_Return);
    if (!QTest::qWaitFor([&] { return field.column.isEmpty() || !editor || QApplication::focusWidget() != editor; }))
        fault(u"the cell stays open"_s);
    ++m_letIn;
    if (m_screen.finish && m_station.form())
        m_screen.finish(m_station);
    QWidget *confirm = m_station.form() ? m_station.form()->findChild<QWidget *>(m_screen.confirm) : nullptr;
    if (confirm && reveal(confirm))
        m_station.click(m_screen.confirm);
    compare(field, letIn, letIn != stood);
    prepare();
}

bool Attack::isStored(const Field &field) const
{
    if (m_screen.stored.contains(field.name))
        return true;
    const QWidget *widget = m_station.form() ? m_station.form()->findChild<QWidget *>(field.name) : nullptr;
    return !m_screen.confirm.isEmpty() && widget && widget->property("DataField").isValid()
        && m_station.form()->findChild<RecordBar *>();
}

void Attack::compare(const Field &field, const QString &letIn, bool changed)
{
    const QList<AnyAnswers::Said> said = m_answers.take();
    m_boxes += int(said.size());
    for (const AnyAnswers::Said &box : said) {
        if (const QString why = faultOf(box); !why.isEmpty())
            fault(why);
    }
    const Rows after = allRows(m_station.database);
    QStringList added;
    for (auto table = m_before.constBegin(); table != m_before.constEnd(); ++table) {
        const QString logical = table.key().endsWith(u"_001"_s) ? table.key().chopped(4) : QString();
        const QStringList gone = difference(table.value(), after[table.key()]);
        const QStringList come = difference(after[table.key()], table.value());
        if (table.key() == u"QEN_LOG"_s ? gone.isEmpty() : gone.isEmpty() && come.isEmpty())
            continue;
        m_touched = true;
        if (!m_screen.saved.contains(logical) && !(m_screen.addsAnywhere && !logical.isEmpty()))
            fault(u"%1 has changed"_s.arg(table.key()));
        for (const QString &row : gone) {
            if (m_screen.key.isEmpty() || !hasCell(row, m_screen.key))
                fault(u"of %1 is gone %2"_s.arg(table.key(), shortened(row)));
        }
        added += come;
    }
    m_saves += added.isEmpty() ? 0 : 1;
    if (!isStored(field) || field.figure || !changed)
        return;
    const QString expected = holdable(letIn);
    if (added.isEmpty() && said.isEmpty())
        fault(u"neither stored nor refused"_s);
    const auto holds = [&](const QString &row) { return hasCell(row, expected) || hasCell(row, expected.trimmed()); };
    if (!added.isEmpty() && std::none_of(added.begin(), added.end(), holds))
        fault(u"stored otherwise than typed: "_s + shortened(added.join(u" / "_s)));
}

} // namespace

/// No text that is typed anywhere does harm.
class TestHostileTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyTextIsStoredAsTypedOrRefused_data();
    void everyTextIsStoredAsTypedOrRefused();
};

void TestHostileTexts::everyTextIsStoredAsTypedOrRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("entry");
    AnyAnswers answers;
    TestStation station(u"firebird"_s);
    for (const QString &name : ClassRegistry::names()) {
        const QList<HostileScreen> entries = HostileScreens::entriesOf(name);
        for (int i = 0; i < entries.size(); ++i)
            QTest::newRow(qPrintable(name + u' ' + entries[i].mode)) << name << i;
        if (!entries.isEmpty())
            continue;
        station.open(name);
        QTest::newRow(qPrintable(name)) << name << -1;
        if (station.form()->findChild<RecordBar *>())
            QTest::newRow(qPrintable(name + u" new record"_s)) << name << -2;
        station.closeForm();
    }
}

void TestHostileTexts::everyTextIsStoredAsTypedOrRefused()
{
    QFETCH(QString, name);
    QFETCH(int, entry);
    HostileScreen screen{.name = name, .mode = {}};
    if (entry >= 0) {
        screen = HostileScreens::entriesOf(name)[entry];
    } else if (entry == -2) {
        screen.confirm = u"SbConfirmar"_s;
        screen.edit = [](TestStation &station) {
            station.click(station.child<RecordBar>(u"Barras"_s)->insertButton());
        };
        screen.addsAnywhere = true;
    } else {
        screen.confirm = u"BtnExecutaSQL"_s; // of report screens
    }
    Attack attack(screen);
    const QStringList faults = attack.run();
    QVERIFY2(faults.isEmpty(), qPrintable(u'\n' + faults.join(u'\n')));
}

QTEST_MAIN(TestHostileTexts)
#include "tst_hostiletexts.moc"
