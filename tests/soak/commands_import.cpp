#include "fmlist-standin/standin.h"
#include "put.h"
#include "support/savedialog.h"
#include "user.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QUrl>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int receptionsOfAnImport = 3;
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

} // namespace

void User::importSpy()
{
    const QDate day = importDay(m_next);
    empty(m_root + u"/spy"_s);
    for (int i = 0; i < receptionsOfAnImport; ++i) {
        const int number = m_next++;
        const QString time = u"10-%1-00"_s.arg(i + 10);
        put(m_root + u"/spy/%1 %2 E201 %3.txt"_s.arg(day.toString(u"yyyy-MM-dd"_s), time, nameOf(number)),
            {});
        QByteArrayList fields = fieldsOf(number, "E201", Teller::anything.toByteArray());
        fields[Field::DateTime] =
            (day.toString(u"dd/MM/yyyy "_s) + QString(time).replace(u'-', u':')).toLatin1();
        m_teller.adding(fields);
    }
    m_answers->type(day.toString(u"dd/MM/yyyy"_s));
    const QPointer<QWidget> window = open(u"menuImportRDSSpyLog"_s, u"importRDSSpy"_s);
    m_answers->press(QMessageBox::Ok);
    click(*window, u"Command3"_s);
    finish();
    closeIf(window);
}

void User::importDx()
{
    const QDate day = importDay(m_next + manyDays / 2);
    QByteArray lines = "  Freq PI   PS       Time    ITU Station|Remarks\r\n";
    for (int i = 0; i < receptionsOfAnImport; ++i) {
        const int number = m_next++;
        const QByteArray minute = QByteArray::number(20 + i);
        lines += "  97.7 5201 " + nameOf(number).toLatin1() + " 20" + minute + " 05 I   Somewhere,X|\r\n";
        QByteArrayList fields = fieldsOf(number, "5201", "97.7");
        fields[Field::Transmitter] = Teller::anything.toByteArray();
        fields[Field::DateTime] = day.toString(u"dd/MM/yyyy"_s).toLatin1() + " 20:" + minute + ":05";
        m_teller.adding(fields);
    }
    empty(m_root + u"/dx"_s);
    const QString file = m_root + u"/dx/"_s + day.toString(u"yyyyMMdd"_s) + u".txt"_s;
    put(file, lines);
    m_answers->press(QMessageBox::Yes);
    m_answers->press(QMessageBox::Ok);
    m_answers->press(QMessageBox::No);
    const QPointer<QWidget> window = open(u"menuImportRDSDXLogCnv"_s, u"rdsdxlist"_s);
    click(*window, u"OKButton"_s);
    finish();
    closeIf(window);
}

// A file of some receptions, which are told, and of more lines.
QByteArray User::fileOfReceptions(const QByteArray &moreLines)
{
    QByteArray lines =
        "Date/Time,PI Code,Freq,RDS Name,Country,Transmitter,Dist,Power,Notes,Prop,FMList,UID\r\n";
    for (int i = 0; i < receptionsOfAnImport; ++i) {
        const int number = m_next++;
        const QString moment = dateOf(number);
        const QByteArray pi = codeOf(number);
        lines +=
            (moment.mid(6, 4) + u'-' + moment.mid(3, 2) + u'-' + moment.first(2) + u'T' + moment.sliced(11)
                + u"Z,"_s + QString::fromLatin1(pi) + u",95.5,"_s + nameOf(number) + u",E,,,,,Es,,\r\n"_s)
                .toLatin1();
        QByteArrayList fields = fieldsOf(number, pi, "95.5");
        fields[Field::Prop] = "Es";
        fields[Field::Country] = "E";
        m_teller.adding(fields);
    }
    return lines + moreLines;
}

// Drops the file on the window of imports and brings in what is shown.
QWidget *User::bringIn(const QByteArray &file)
{
    const QString path = m_root + u"/in/receptions.csv"_s;
    put(path, file);
    QWidget *window = open(u"menuImportFile"_s, u"importFile"_s);
    QMimeData dropped;
    dropped.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({}, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &enter);
    QDropEvent drop({}, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &drop);
    click(*window, u"importGo"_s);
    finish();
    return window;
}

void User::importAFile()
{
    const QPointer<QWidget> window = bringIn(fileOfReceptions({}));
    closeIf(window);
}

void User::importToRefuse()
{
    (void)bringIn(fileOfReceptions("2015-02-30T10:00:00Z,F201,95.5,NO_DAY,F,,,,,,,\r\n"
                                   "2015-13-20T10:00:00Z,F201,95.5,NO_MONTH,F,,,,,,,\r\n"));
}

void User::importWithRefused()
{
    importToRefuse();
    const QPointer<QWidget> window = find<QWidget>(u"importFile"_s);
    if (!m_failed) {
        saveRefused();
    }
    closeIf(window);
}

// Of the file that was brought in last.
void User::saveRefused()
{
    chooseFile(m_root + u"/out/refused.txt"_s);
    click(u"importSaveRefused"_s);
    finish();
}

void User::importStations()
{
    const QString path = m_root + u"/in/stations.csv"_s;
    QByteArray lines = "freq;pi;ps;itu;site;lat;lon;erp\r\n";
    for (int i = 0; i < 50; ++i) {
        lines += QByteArray::number(87.6 + 0.1 * i, 'f', 1) + ";F201;ST" + QByteArray::number(m_next)
            + ";F;Reims;49.1;3.93;10\r\n";
    }
    ++m_next;
    put(path, lines);
    test::saveAs(*m_answers, path);
    m_answers->doing([](QWidget *columns) { columns->findChild<QPushButton *>(u"OKButton"_s)->click(); });
    m_answers->press(QMessageBox::Ok);
    trigger(u"menuImportStations"_s);
    finish();
}

// Where the settings have the service.
quint16 User::portOfService() const
{
    QFile settings(m_root + u"/log/LOGBOOK.INI"_s);
    if (settings.open(QIODevice::ReadOnly)) {
        const QByteArrayList lines = settings.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("FMLIST_URL=")) {
                return static_cast<quint16>(
                    QUrl(QString::fromLatin1(line.trimmed().sliced(line.indexOf('=') + 1))).port());
            }
        }
    }
    return 0;
}

// Lets the stand-in take the place of the service; false, and told, when it cannot.
bool User::serves(standin::StandIn &service)
{
    if (!service.listen(portOfService())) {
        giveUp("the service has no port");
        return false;
    }
    return true;
}

void User::autoSearch()
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
    if (!serves(service)) {
        return;
    }
    // Whatever else was heard on that day is looked up, too.
    m_teller.changing(
        {Field::Transmitter, Field::Country, Field::Power, Field::Dist, Field::FMList, Field::Uid});
    m_teller.setting(nameOf(first).toLatin1(), Field::Uid, QByteArray::number(1000 + first));
    // The day of the first.
    m_answers->type(dateOf(first).first(10));
    m_answers->press(QMessageBox::Yes);
    m_answers->press(QMessageBox::Ok);
    trigger(u"menuFMListAutoSearch"_s);
    if (service.requests().isEmpty()) {
        giveUp("nothing was searched for");
    }
    finish();
}

} // namespace quillon::soak
