#include "session.h"

#include "import/ui/importfile.h"
#include "import/ui/importrdsspy.h"
#include "import/ui/rdsdxlist.h"
#include "put.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QUrl>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptionsOfAnImport = 3;
constexpr int firstPi = 0x1000;
constexpr int manyPis = 0xE000;
constexpr int manyDays = 15'000;

// Imports are of days of their own.
QDate importDay(int number)
{
    return QDate(1970, 1, 1).addDays(number % manyDays);
}

// Removes what a killed import has not come to.
void empty(const QString &path)
{
    QDir folder(path);
    const QStringList names = folder.entryList(QDir::Files);
    for (const QString &name : names) {
        folder.remove(name);
    }
}

// A window may have gone by itself.
void closeIf(const QPointer<QWidget> &window)
{
    if (window) {
        window->close();
    }
}

void press(const QWidget *window, const QString &button)
{
    window->findChild<QPushButton *>(button)->click();
}

} // namespace

void Session::add()
{
    const int number = m_next++;
    type(nameOf(number), dateOf(number));
    if (m_random.bounded(4) == 0) {
        set(u"Text5"_s, u"Site %1"_s.arg(number));
        set(u"Text7"_s, u"48.85"_s);
        set(u"Text10"_s, u"2.29"_s);
    }
    intend(number, "F201");
    click(u"Command1"_s);
    finish();
}

void Session::update()
{
    const QString name = choose();
    if (name.isEmpty()) {
        return;
    }
    const QString note = u"note %1"_s.arg(m_next++);
    set(u"Text3"_s, note);
    m_teller.noting(name.toLatin1(), note.toLatin1());
    click(u"Command3"_s);
    finish();
}

void Session::remove()
{
    const QString name = choose();
    if (!name.isEmpty()) {
        m_teller.removing(name.toLatin1());
        click(u"Command15"_s);
        finish();
    }
}

void Session::undoAndRedo()
{
    const int number = m_next;
    add();
    if (m_failed) {
        return;
    }
    m_teller.removing(nameOf(number).toLatin1());
    trigger(u"menuEditUndo"_s);
    finish();
    intend(number, "F201");
    trigger(u"menuEditRedo"_s);
    finish();
}

void Session::importSpy()
{
    const QDate day = importDay(m_next);
    empty(m_root + u"/spy"_s);
    for (int i = 0; i < receptionsOfAnImport; ++i) {
        const int number = m_next++;
        const QString time = u"10-%1-00"_s.arg(i + 10);
        put(m_root + u"/spy/%1 %2 E201 %3.txt"_s.arg(day.toString(u"yyyy-MM-dd"_s), time, nameOf(number)),
            {});
        m_teller.adding(nameOf(number).toLatin1(),
            "E201|" + day.toString(u"dd/MM/yyyy"_s).toLatin1() + ' '
                + QString(time).replace(u'-', u':').toLatin1() + '|',
            {});
    }
    m_answers->type(day.toString(u"dd/MM/yyyy"_s));
    trigger(u"menuImportRDSSpyLog"_s);
    const QPointer<importRDSSpy> window = find<importRDSSpy>(u"importRDSSpy"_s);
    m_answers->press(QMessageBox::Ok);
    press(window, u"Command3"_s);
    finish();
    closeIf(window.data());
}

void Session::importDx()
{
    const QDate day = importDay(m_next + manyDays / 2);
    QByteArray lines = "  Freq PI   PS       Time    ITU Station|Remarks\r\n";
    for (int i = 0; i < receptionsOfAnImport; ++i) {
        const int number = m_next++;
        const QByteArray minute = QByteArray::number(20 + i);
        lines += "  97.7 5201 " + nameOf(number).toLatin1() + " 20" + minute + " 05 I   Somewhere,X|\r\n";
        m_teller.adding(nameOf(number).toLatin1(),
            "5201|" + day.toString(u"dd/MM/yyyy"_s).toLatin1() + " 20:" + minute + ":05|", {});
    }
    empty(m_root + u"/dx"_s);
    const QString file = m_root + u"/dx/"_s + day.toString(u"yyyyMMdd"_s) + u".txt"_s;
    put(file, lines);
    m_answers->press(QMessageBox::Yes);
    m_answers->press(QMessageBox::Ok);
    m_answers->press(QMessageBox::No);
    trigger(u"menuImportRDSDXLogCnv"_s);
    const QPointer<rdsdxlist> window = find<rdsdxlist>(u"rdsdxlist"_s);
    press(window, u"OKButton"_s);
    finish();
    closeIf(window.data());
}

void Session::importAFile()
{
    QByteArray lines =
        "Date/Time,PI Code,Freq,RDS Name,Country,Transmitter,Dist,Power,Notes,Prop,FMList,UID\r\n";
    for (int i = 0; i < receptionsOfAnImport; ++i) {
        const int number = m_next++;
        const QString moment = dateOf(number);
        // What is heard again within minutes is not brought in again.
        const QByteArray pi = QByteArray::number(firstPi + number % manyPis, 16).toUpper();
        lines +=
            (moment.mid(6, 4) + u'-' + moment.mid(3, 2) + u'-' + moment.first(2) + u'T' + moment.sliced(11)
                + u"Z,"_s + QString::fromLatin1(pi) + u",95.5,"_s + nameOf(number) + u",E,,,,,Es,,\r\n"_s)
                .toLatin1();
        intend(number, pi);
    }
    const QString file = m_root + u"/in/receptions.csv"_s;
    put(file, lines);
    trigger(u"menuImportFile"_s);
    const QPointer<importFile> window = find<importFile>(u"importFile"_s);
    window->show(QStringList {file});
    press(window, u"importGo"_s);
    finish();
    closeIf(window.data());
}

void Session::autoSearch()
{
    // One that the service knows exactly, one that it knows twice, and one that it does not know.
    const int first = m_next;
    QByteArray stations;
    for (int i = 0; i < receptionsOfAnImport; ++i) {
        const int number = m_next;
        add();
        if (m_failed) {
            return;
        }
        const QByteArray station =
            "105.5;F201;" + nameOf(number).toLatin1() + ";F;Champagne, Reims;64;49.09;3.93;";
        const int known = i == 0 ? 1 : i == 1 ? 2 : 0;
        for (int j = 0; j < known; ++j) {
            stations += station + QByteArray::number(1000 + number + j) + '\n';
        }
    }
    standin::StandIn service(stations);
    if (!service.listen(static_cast<quint16>(QUrl(m_form->config().settings().fmlistUrl).port()))) {
        return;
    }
    m_answers->type(dayOf(first));
    m_answers->press(QMessageBox::Yes);
    m_answers->press(QMessageBox::Ok);
    trigger(u"menuFMListAutoSearch"_s);
    finish();
}

void Session::distances()
{
    click(u"Command10"_s);
    finish();
}

const std::vector<Session::Command> &Session::commands()
{
    static const std::vector<Command> all {
        {"Add", &Session::add},
        {"Update", &Session::update},
        {"Delete", &Session::remove},
        {"Undo and Redo", &Session::undoAndRedo},
        {"RDS Spy import", &Session::importSpy},
        {"RDSDX import", &Session::importDx},
        {"file import", &Session::importAFile},
        {"automatic search", &Session::autoSearch},
        {"distances", &Session::distances},
        {"transmitters as KML", &Session::exportTransmitters},
        {"log as KML", &Session::exportLog},
        {"web pages", &Session::exportPages},
        {"text", &Session::exportText},
        {"shown receptions", &Session::exportShown},
        {"setup", &Session::setUp},
        {"backup", &Session::backUp},
    };
    return all;
}

} // namespace quillon::soak
