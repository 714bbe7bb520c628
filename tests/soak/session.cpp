#include "session.h"

#include "platform/pause.h"
#include "put.h"
#include "support/testfiles.h"
#include "ui/grid.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTcpServer>
#include <QTest>

#include <algorithm>

namespace quillon {

// The automatic search spares the service two seconds after each reception: here nobody has to be spared.
void Pause(float /*seconds*/) { }

} // namespace quillon

namespace quillon::soak {

using namespace Qt::StringLiterals;

quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

QString nameOf(int number)
{
    return u"R%1"_s.arg(number, 7, 10, QChar(u'0'));
}

QString dateOf(int number)
{
    const QDateTime first(QDate(2015, 1, 1), QTime(0, 0), Qt::UTC);
    return first.addSecs(qint64(number) * 61).toString(u"dd/MM/yyyy hh:mm:ss"_s);
}

void layOut(const QString &root, int receptions, quint16 port)
{
    for (const QString &folder :
        {u"log"_s, u"look"_s, u"backups"_s, u"out"_s, u"spy"_s, u"dx"_s, u"in"_s, u"tmp"_s}) {
        QDir(root).mkpath(folder);
    }
    const QDir supplied(QStringLiteral(QUILLON_SUPPLIED));
    for (const QString &name : {u"country.lst"_s, u"quillon_index.template"_s, u"quillon_log.template"_s}) {
        QFile::copy(supplied.filePath(name), root + u"/log/"_s + name);
    }
    // Small ones, as they are copied and compared again and again.
    put(root + u"/log/quillon_mapview.htm"_s, "<title>Map</title>\n");
    put(root + u"/log/manual.html"_s, "<title>Manual</title>\n");
    QByteArray log;
    for (int i = 0; i < receptions; ++i) {
        log += test::logLine("E201", dateOf(i).toLatin1(), "87.6", nameOf(i).toLatin1(),
            i % 3 == 0 ? "E" : "F", i % 3 == 0 ? "Bilbao" : "Reims");
    }
    put(root + u"/log/RDSLog.log"_s, log);
    put(root + u"/log/tx.lst"_s, "Bilbao|E|43.26|-2.93||\r\nReims|F|49.1|3.93||\r\n");
    put(root + u"/log/LOGBOOK.INI"_s,
        "LOG_BOOK_CALLSIGN=DL1ABC\r\nHOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\nTIME_OFFSET="
        "0\r\n"
        "RDSSPY_LOGS="
            + QFile::encodeName(root) + "/spy\r\nRDSDX_LOG=" + QFile::encodeName(root)
            + "/dx\r\nFMLIST_URL=http://127.0.0.1:" + QByteArray::number(port) + "\r\n");
}

Session::Session(const QString &root, FileCalls &calls, Teller &teller, int first, quint32 seed)
    : m_root(root)
    , m_calls(calls)
    , m_teller(teller)
    , m_next(first)
    , m_random(seed)
{
}

void Session::start()
{
    m_form = std::make_unique<Form1>(Form1Options {m_root + u"/log"_s, QStringLiteral(QUILLON_SUPPLIED),
        Regional::fromEnvironment(), &m_calls, m_root + u"/look"_s, m_root + u"/backups"_s});
    m_form->Form_Load();
    m_form->show();
    const QStringList leftovers =
        QDir(m_root + u"/log"_s)
            .entryList(
                {u".RDSLog.log.new"_s, u".tx.lst.new"_s, u".LOGBOOK.INI.new"_s}, QDir::Files | QDir::Hidden);
    m_teller.started(m_form->log().count(), (m_answers->takeTexts() + leftovers).join(u'\n').toUtf8());
}

void Session::run(const Command &command)
{
    m_failed = false;
    m_teller.command(command.name);
    (this->*command.run)();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void Session::runAny()
{
    const auto &all = commands();
    run(all.at(static_cast<std::size_t>(m_random.bounded(static_cast<int>(all.size())))));
}

void Session::click(const QString &button)
{
    find<QAbstractButton>(button)->click();
}

void Session::trigger(const QString &action)
{
    find<QAction>(action)->trigger();
}

void Session::set(const QString &field, const QString &text)
{
    auto *widget = find<QWidget>(field);
    if (auto *notes = qobject_cast<QPlainTextEdit *>(widget)) {
        // As if it were typed: what is not does not count as changed.
        notes->selectAll();
        notes->insertPlainText(text);
    } else if (auto *combo = qobject_cast<QComboBox *>(widget)) {
        combo->lineEdit()->setText(text);
    } else {
        qobject_cast<QLineEdit *>(widget)->setText(text);
    }
}

// Fills the form for a new reception.
void Session::type(const QString &name, const QString &date)
{
    click(u"Command2"_s);
    set(u"Text9"_s, u"105.5"_s);
    set(u"Text1"_s, u"F201"_s);
    set(u"Text8"_s, name);
    set(u"Combo3"_s, u"F"_s);
    set(u"Text2"_s, date);
}

QString Session::choose()
{
    const Logbook &log = m_form->log();
    std::vector<qint32> kept;
    for (qint32 i = 0; i < log.count(); ++i) {
        if (!isDeleted(log.entry(i))) {
            kept.push_back(i);
        }
    }
    auto *grid = find<Grid>(u"Grid1"_s);
    if (kept.empty()) {
        return {};
    }
    const qint32 entry = kept.at(static_cast<std::size_t>(m_random.bounded(static_cast<int>(kept.size()))));
    const QModelIndex cell = grid->model()->index(grid->rowOfEntry(entry) - 1, 1);
    grid->scrollTo(cell);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(cell).center());
    return m_form->selected() == entry ? log.entry(entry).rdsName : QString();
}

void Session::intend(int number, const QByteArray &pi)
{
    m_teller.adding(nameOf(number).toLatin1(), pi + '|' + dateOf(number).toLatin1() + '|', {});
}

// The command is over: what was told is confirmed, unless it was an error.
void Session::finish()
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

// The day of a reception, as an import or a search is asked for it.
QString Session::dayOf(int number) const
{
    return dateOf(number).first(10);
}

} // namespace quillon::soak
