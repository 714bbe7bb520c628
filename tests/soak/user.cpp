#include "user.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

#include <utility>

namespace quillon::soak {

using namespace Qt::StringLiterals;

QString backupsBelow(const QString &root)
{
    return root + u"/state/quillon/backups"_s;
}

User::User(const QString &root, Teller &teller, int first, quint32 seed)
    : m_root(root)
    , m_teller(teller)
    , m_next(first)
    , m_random(seed)
{
}

void User::workWith(QWidget &window)
{
    m_window = &window;
    m_grid = find<QAbstractItemView>(u"Grid1"_s);
    // What a kill has left of these is gone with the start.
    const QStringList leftovers =
        QDir(m_root + u"/log"_s)
            .entryList(
                {u".RDSLog.log.new"_s, u".tx.lst.new"_s, u".LOGBOOK.INI.new"_s}, QDir::Files | QDir::Hidden);
    m_teller.started(m_grid->model()->rowCount(), (m_answers->takeTexts() + leftovers).join(u'\n').toUtf8());
}

void User::run(const Command &command)
{
    m_failed = false;
    m_teller.command(command.name);
    (this->*command.run)();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void User::runAny()
{
    const auto &all = commands();
    run(all.at(static_cast<std::size_t>(m_random.bounded(static_cast<int>(all.size())))));
}

void User::click(const QString &button)
{
    click(*m_window, button);
}

void User::click(const QWidget &in, const QString &button)
{
    find<QAbstractButton>(in, button)->click();
}

void User::trigger(const QString &action)
{
    find<QAction>(action)->trigger();
}

QWidget *User::open(const QString &action, const QString &window)
{
    trigger(action);
    return find<QWidget>(window);
}

void User::set(const QString &field, const QString &text)
{
    auto *widget = find<QWidget>(field);
    if (auto *notes = qobject_cast<QPlainTextEdit *>(widget)) {
        // As if it were typed: what is not does not count as changed.
        notes->selectAll();
        notes->insertPlainText(text);
    } else if (auto *combo = qobject_cast<QComboBox *>(widget)) {
        combo->lineEdit()->setText(text);
    } else {
        find<QLineEdit>(field)->setText(text);
    }
}

// Fills the form for a new reception.
void User::type(const QString &name, const QString &date)
{
    click(u"Command2"_s);
    set(u"Text9"_s, u"105.5"_s);
    set(u"Text1"_s, u"F201"_s);
    set(u"Text8"_s, name);
    set(u"Combo3"_s, u"F"_s);
    set(u"Text2"_s, date);
}

QString User::cell(int row, const QString &heading) const
{
    const QAbstractItemModel &model = *m_grid->model();
    for (int column = 0; column < model.columnCount(); ++column) {
        if (model.headerData(column, Qt::Horizontal).toString() == heading) {
            return model.index(row, column).data().toString();
        }
    }
    qFatal("the grid has no column %s", qPrintable(heading));
}

std::vector<int> User::rowsThatAreKept() const
{
    std::vector<int> rows;
    for (int row = 0; row < m_grid->model()->rowCount(); ++row) {
        if (cell(row, u"PI Code"_s) != "delete"_L1) {
            rows.push_back(row);
        }
    }
    return rows;
}

void User::clickRow(int row, Qt::KeyboardModifiers keys)
{
    const QModelIndex clicked = m_grid->model()->index(row, 1);
    m_grid->scrollTo(clicked);
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, keys, m_grid->visualRect(clicked).center());
}

QString User::choose()
{
    const std::vector<int> kept = rowsThatAreKept();
    if (kept.empty()) {
        return {};
    }
    const int row = kept.at(static_cast<std::size_t>(m_random.bounded(static_cast<int>(kept.size()))));
    const QString name = cell(row, u"RDS Name"_s);
    clickRow(row, Qt::NoModifier);
    return find<QLineEdit>(u"Text8"_s)->text() == name ? name : QString();
}

QStringList User::chooseSome()
{
    constexpr int most = 4;
    std::vector<int> kept = rowsThatAreKept();
    if (kept.size() < most) {
        return {};
    }
    QStringList names;
    for (int left = m_random.bounded(2, most + 1); left > 0; --left) {
        const auto at = kept.begin() + m_random.bounded(static_cast<int>(kept.size()));
        clickRow(*at, names.isEmpty() ? Qt::NoModifier : Qt::ControlModifier);
        names += cell(*at, u"RDS Name"_s);
        kept.erase(at);
    }
    return names;
}

QByteArrayList User::fieldsOf(int number, const QByteArray &pi, const QByteArray &freq)
{
    QByteArrayList fields(Field::count, Teller::anything.toByteArray());
    fields[Field::PiCode] = pi;
    fields[Field::DateTime] = dateOf(number).toLatin1();
    fields[Field::Freq] = freq;
    for (const int blank : {Field::Transmitter, Field::Notes, Field::Power, Field::FMList, Field::Uid}) {
        fields[blank] = {};
    }
    fields[Field::RdsName] = nameOf(number).toLatin1();
    return fields;
}

void User::giveUp(const QByteArray &why)
{
    m_failed = true;
    m_teller.failed(why);
}

// The command is over: what was told is confirmed, unless it was an error.
void User::finish()
{
    const QStringList texts = m_answers->takeTexts();
    for (const QString &text : texts) {
        if (text.contains(u"Run-time error"_s)) {
            m_failed = true;
            m_teller.failed(text.toUtf8());
        }
    }
    if (!m_failed) {
        m_teller.done();
    }
    // Answers that nobody asked for.
    m_answers = std::make_unique<test::DialogAnswers>();
    (void)m_opened.take();
}

} // namespace quillon::soak
