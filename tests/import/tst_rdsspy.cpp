#include "import/rdsspy.h"
#include "support/testfiles.h"

#include <QDir>
#include <QTest>

#include <array>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

const MonthNames months = MonthNames::of(QLocale::c());

Day day(const QString &text)
{
    const auto found = dayOf(text, months);
    return found ? *found : Day {};
}

RdsSpyListing listing(const QStringList &names, const QString &dayText = u"12/06/2010"_s)
{
    return rdsSpyListing(names, u"/logs"_s, day(dayText), months);
}

// The files of a folder that are opened from now on.
class OpenedFiles
{
public:
    explicit OpenedFiles(const QString &folder)
        : m_events(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (::inotify_add_watch(m_events, QFile::encodeName(folder).constData(), IN_OPEN) < 0) {
            qFatal("the folder cannot be watched");
        }
    }
    ~OpenedFiles() { ::close(m_events); }
    OpenedFiles(const OpenedFiles &) = delete;
    OpenedFiles &operator=(const OpenedFiles &) = delete;

    // Those since the last call.
    [[nodiscard]] QByteArrayList names() const
    {
        QByteArrayList all;
        alignas(inotify_event) std::array<char, 4096> buffer {};
        for (ssize_t size = 0; (size = ::read(m_events, buffer.data(), buffer.size())) > 0;) {
            for (ssize_t at = 0; at < size;) {
                inotify_event event {};
                std::memcpy(&event, buffer.data() + at, sizeof event);
                // Listing a folder opens the folder itself.
                if (!(event.mask & IN_ISDIR)) {
                    all += QByteArray(buffer.data() + at + sizeof event);
                }
                at += static_cast<ssize_t>(sizeof event + event.len);
            }
        }
        return all;
    }

private:
    int m_events;
};

} // namespace

class TestRdsSpy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesBecomeLines_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("line");
        QTest::newRow("year first") << u"2010-06-12 18-22-05 D3C3 BAYERN3.txt"_s
                                    << u"2010/06/12 18:22:05\tD3C3\tBAYERN3"_s;
        QTest::newRow("day first") << u"12-06-2010 18-22-05 D3C3 BAYERN3.txt"_s
                                   << u"12/06/2010 18:22:05\tD3C3\tBAYERN3"_s;
        QTest::newRow("words") << u"2010-06-12 18-22-05 D3C3 RADIO 1.txt"_s
                               << u"2010/06/12 18:22:05\tD3C3\tRADIO 1"_s;
        QTest::newRow("blanks at the end")
            << u"2010-06-12 18-22-05 D3C3 NDR 2   .txt"_s << u"2010/06/12 18:22:05\tD3C3\tNDR 2"_s;
        QTest::newRow("blanks before the name")
            << u"2010-06-12 18-22-05 D3C3   R1.txt"_s << u"2010/06/12 18:22:05\tD3C3\t  R1"_s;
        QTest::newRow("no name") << u"2010-06-12 18-22-05 D3C3.txt"_s << u"2010/06/12 18:22:05\tD3C3\t"_s;
        QTest::newRow("no PI code") << u"2010-06-12 18-22-05  R1.txt"_s << u"2010/06/12 18:22:05\t\tR1"_s;
        QTest::newRow("every .txt") << u"2010-06-12 18-22-05 D3C3 A.txt B.txt.txt"_s
                                    << u"2010/06/12 18:22:05\tD3C3\tA B"_s;
        QTest::newRow("ending in capitals")
            << u"2010-06-12 18-22-05 D3C3 A.TXT.TXT"_s << u"2010/06/12 18:22:05\tD3C3\tA.TXT"_s;
        QTest::newRow("hyphen in the name")
            << u"2010-06-12 18-22-05 D3C3 SWR-3.txt"_s << u"2010/06/12 18:22:05\tD3C3\tSWR-3"_s;
        QTest::newRow("not ASCII") << u"2010-06-12 18-22-05 F201 Caf\u00E9 \u0141\u00F3d\u017A.txt"_s
                                   << u"2010/06/12 18:22:05\tF201\tCaf\u00E9 \u0141\u00F3d\u017A"_s;
        QTest::newRow("no seconds") << u"2010-06-12 18-22 D3C3 R1.txt"_s << u"2010/06/12 18:22\tD3C3\tR1"_s;
        QTest::newRow("a date alone") << u"2010-06-12  D3C3 R1.txt"_s << u"2010/06/12 \tD3C3\tR1"_s;
    }

    void namesBecomeLines()
    {
        QFETCH(QString, name);
        QFETCH(QString, line);
        QCOMPARE(rdsSpyCandidate(name, months).line, line);
    }

    void theMomentIsReadDayFirstOrYearFirst()
    {
        const auto expected = fromCivil({2010, 6, 12, 18, 22, 5});
        QVERIFY(expected);
        QCOMPARE(rdsSpyCandidate(u"2010-06-12 18-22-05 D3C3 R1.txt"_s, months).dateTime, *expected);
        QCOMPARE(rdsSpyCandidate(u"12-06-2010 18-22-05 D3C3 R1.txt"_s, months).dateTime, *expected);
        QCOMPARE(rdsSpyCandidate(u"12-06-10 18-22-05 D3C3 R1.txt"_s, months).dateTime, *expected);
    }

    void namesThatAreNoReceptionFail_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<ErrorName>("error");
        QTest::newRow("one token") << u"README.txt"_s << ErrorName::SubscriptOutOfRange;
        QTest::newRow("two tokens") << u"2010-06-12 18-22-05.txt"_s << ErrorName::SubscriptOutOfRange;
        QTest::newRow("nothing") << u".txt"_s << ErrorName::SubscriptOutOfRange;
        QTest::newRow("words") << u"list of stations.txt"_s << ErrorName::TypeMismatch;
        QTest::newRow("impossible day") << u"2010-02-30 18-22-05 D3C3 R1.txt"_s << ErrorName::TypeMismatch;
        QTest::newRow("impossible time") << u"2010-06-12 24-00-00 D3C3 R1.txt"_s << ErrorName::TypeMismatch;
        QTest::newRow("month first") << u"06-13-2010 18-22-05 D3C3 R1.txt"_s << ErrorName::TypeMismatch;
        QTest::newRow("blank before") << u" 2010-06-12 18-22-05 D3C3 R1.txt"_s << ErrorName::TypeMismatch;
        QTest::newRow("tab before") << u"\t2010-06-12 18-22-05 D3C3 R1.txt"_s << ErrorName::TypeMismatch;
        QTest::newRow("tab behind the date")
            << u"2010-06-12\t 18-22-05 D3C3 R1.txt"_s << ErrorName::TypeMismatch;
    }

    void namesThatAreNoReceptionFail()
    {
        QFETCH(QString, name);
        QFETCH(ErrorName, error);
        try {
            (void)rdsSpyCandidate(name, months);
            QFAIL("no error");
        } catch (const RuntimeError &thrown) {
            QCOMPARE(thrown.name(), error);
            QVERIFY(thrown.doing().contains(u'"' + name + u'"'));
        }
    }

    void bothEndsOfTheDayAreListed()
    {
        const RdsSpyListing result =
            listing({u"2010-06-13 00-00-00 D3C3 after.txt"_s, u"2010-06-12 23-59-59 D3C3 last.txt"_s,
                u"2010-06-12 00-00-00 D3C3 first.txt"_s, u"2010-06-11 23-59-59 D3C3 before.txt"_s});
        QVERIFY(!result.failure);
        QCOMPARE(result.lines,
            QStringList({u"2010/06/12 00:00:00\tD3C3\tfirst"_s, u"2010/06/12 23:59:59\tD3C3\tlast"_s}));
    }

    void aDayIsADate_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::newRow("offered form") << u"12/06/2010"_s << true;
        QTest::newRow("year first") << u"2010-06-12"_s << true;
        QTest::newRow("month by name") << u"12-june-2010"_s << true;
        QTest::newRow("blanks between") << u"12 june 2010"_s << false;
        QTest::newRow("dots") << u"12.6.10"_s << true;
        QTest::newRow("blanks around") << u" 12/06/2010 "_s << true;
        QTest::newRow("word") << u"yesterday"_s << false;
        QTest::newRow("blank") << u" "_s << false;
        QTest::newRow("impossible") << u"31/06/2010"_s << false;
        QTest::newRow("with a time of day") << u"12/06/2010 10:00"_s << false;
        QTest::newRow("a time alone") << u"10:00"_s << false;
    }

    void aDayIsADate()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        const auto found = dayOf(text, months);
        QCOMPARE(found.has_value(), valid);
        if (valid) {
            QCOMPARE(generalText(found->first), u"12/06/2010 00:00:00"_s);
            QCOMPARE(generalText(found->last), u"12/06/2010 23:59:59"_s);
        }
    }

    void aStrayFileIsToldAndHidesNothing()
    {
        const RdsSpyListing result = listing({u"AF list.txt"_s, u"2010-06-12 10-00-00 D3C3 R1.txt"_s,
            u"notes on the day.txt"_s, u"2010-06-12 09-00-00 D3C3 R2.txt"_s});
        QCOMPARE(result.lines,
            QStringList({u"2010/06/12 09:00:00\tD3C3\tR2"_s, u"2010/06/12 10:00:00\tD3C3\tR1"_s}));
        QVERIFY(result.failure);
        QCOMPARE(result.failure->text(),
            u"Run-time error: Subscript out of range\nListing /logs: the file name \"AF list.txt\" has no "
            u"date, "
            "time and PI code with blanks between.\nMove this file out of the folder; the other receptions "
            "are "
            "listed.\n1 more of its files are not named like a reception."_s);
    }

    void aStrayFileWithABadDateIsATypeMismatch()
    {
        const RdsSpyListing result = listing({u"2010-13-12 10-00-00 D3C3 R1.txt"_s});
        QCOMPARE(result.lines, QStringList());
        QVERIFY(result.failure);
        QCOMPARE(result.failure->text(),
            u"Run-time error: Type mismatch\nListing /logs: the file name \"2010-13-12 10-00-00 D3C3 "
            u"R1.txt\" "
            "does not begin with a date and a time: \"2010/13/12 10:00:00\".\nMove this file out of the "
            "folder; "
            "the other receptions are listed."_s);
    }

    void filesOfAFolderAreListedWithoutBeingOpened()
    {
        const TestDirectory directory;
        directory.write(u"2010-06-12 18-22-05 F201 Caf\u00E9.txt"_s, "");
        directory.write(u"2010-06-12 18-22-04 D3C3 A.TXT"_s, "");
        directory.write(u"2010-06-12 18-22-03 D3C3 A.log"_s, "");
        const Regional regional {CodePage(), NumberFormat(), months};
        const OpenedFiles opened(directory.path());
        const RdsSpyListing result = listRdsSpyFolder(directory.path(), day(u"12/06/2010"_s), regional);
        QCOMPARE(opened.names(), QByteArrayList());
        (void)directory.read(u"2010-06-12 18-22-03 D3C3 A.log"_s);
        QCOMPARE(opened.names(), QByteArrayList {"2010-06-12 18-22-03 D3C3 A.log"_ba});
        QVERIFY(!result.failure);
        QCOMPARE(result.lines,
            QStringList({u"2010/06/12 18:22:04\tD3C3\tA"_s, u"2010/06/12 18:22:05\tF201\tCaf\u00E9"_s}));
        QCOMPARE(regional.codePage.encode(result.lines.last().last(4)), QByteArray("Caf\xE9"));
    }

    void aMissingFolderListsNothing()
    {
        const TestDirectory directory;
        const Regional regional {CodePage(), NumberFormat(), months};
        const RdsSpyListing result =
            listRdsSpyFolder(directory.file(u"none"_s), day(u"12/06/2010"_s), regional);
        QCOMPARE(result.lines, QStringList());
        QVERIFY(!result.failure);
    }

    void ofTwentyThousandFilesThoseOfTheDayAreListed()
    {
        const TestDirectory directory;
        for (int i = 0; i < 20'000; ++i) {
            const QString name = u"2010-06-%1 %2-%3-00 D%4 RADIO %5.txt"_s.arg(i % 28 + 1, 2, 10, QChar(u'0'))
                                     .arg(i % 24, 2, 10, QChar(u'0'))
                                     .arg(i % 60, 2, 10, QChar(u'0'))
                                     .arg(i % 4096, 3, 16, QChar(u'0'))
                                     .arg(i);
            QFile file(directory.file(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        const Regional regional {CodePage(), NumberFormat(), months};
        const RdsSpyListing result = listRdsSpyFolder(directory.path(), day(u"12/06/2010"_s), regional);
        QCOMPARE(result.lines.size(), 714);
        QVERIFY(!result.failure);
    }

    void marksStandBeforeTheLine()
    {
        QVERIFY(isMarked(u"*x"));
        QVERIFY(!isMarked(u"x*"));
        QVERIFY(!isMarked(u""));
        QCOMPARE(marked(u"x"_s), u"*x"_s);
        QCOMPARE(marked(u"*x"_s), u"*x"_s);
        QCOMPARE(unmarked(u"*x"_s), u"x"_s);
        QCOMPARE(unmarked(u"x"_s), u"x"_s);
    }

    void allRowsAreMarkedAndUnmarked()
    {
        const QStringList some {u"*b"_s, u"*d"_s, u"a"_s, u"c"_s};
        QCOMPARE(allMarked(some), QStringList({u"*a"_s, u"*b"_s, u"*c"_s, u"*d"_s}));
        QCOMPARE(allUnmarked(some), QStringList({u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
        QCOMPARE(allMarked({}), QStringList());
    }

    void linesBecomeReceptions_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("offset");
        QTest::addColumn<QString>("dateTime");
        QTest::addColumn<QString>("piCode");
        QTest::addColumn<QString>("rdsName");
        const QString line = u"2010/06/12 00:30:00\tD3C3\tRADIO 1"_s;
        QTest::newRow("no offset") << line << u"0"_s << u"12/06/2010 00:30:00"_s << u"D3C3"_s << u"RADIO 1"_s;
        QTest::newRow("an hour back")
            << line << u"-1"_s << u"11/06/2010 23:30:00"_s << u"D3C3"_s << u"RADIO 1"_s;
        QTest::newRow("a day on") << line << u"24"_s << u"13/06/2010 00:30:00"_s << u"D3C3"_s << u"RADIO 1"_s;
        QTest::newRow("rounded up") << line << u"1.6"_s << u"12/06/2010 02:30:00"_s << u"D3C3"_s
                                    << u"RADIO 1"_s;
        QTest::newRow("half to even")
            << line << u"2,5"_s << u"12/06/2010 02:30:00"_s << u"D3C3"_s << u"RADIO 1"_s;
        QTest::newRow("largest") << line << u"32767"_s << u"08/03/2014 07:30:00"_s << u"D3C3"_s
                                 << u"RADIO 1"_s;
        QTest::newRow("the last hour of the calendar") << u"31/12/9999 22:59:59\tD3C3\tR1"_s << u"1"_s
                                                       << u"31/12/9999 23:59:59"_s << u"D3C3"_s << u"R1"_s;
        QTest::newRow("the first hour of the calendar") << u"0100/01/01 01:00:00\tD3C3\tR1"_s << u"-1"_s
                                                        << u"01/01/0100 00:00:00"_s << u"D3C3"_s << u"R1"_s;
        QTest::newRow("no PI code and no name")
            << u"12/06/2010 10:00:00\t\t"_s << u"0"_s << u"12/06/2010 10:00:00"_s << u""_s << u""_s;
    }

    void linesBecomeReceptions()
    {
        QFETCH(QString, line);
        QFETCH(QString, offset);
        QFETCH(QString, dateTime);
        QFETCH(QString, piCode);
        QFETCH(QString, rdsName);
        const RdsSpyReception reception = rdsSpyReception(line, u" 87.50"_s, offset, months);
        QCOMPARE(reception.dateTime, dateTime);
        QCOMPARE(reception.freq, u" 87.50"_s);
        QCOMPARE(reception.piCode, piCode);
        QCOMPARE(reception.rdsName, rdsName);
        QCOMPARE(reception.country, u"TBD"_s);
    }

    void offsetsThatAreNoHoursFail_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("offset");
        QTest::addColumn<ErrorName>("error");
        const QString line = u"2010/06/12 00:30:00\tD3C3\tR1"_s;
        QTest::newRow("word") << line << u"one"_s << ErrorName::TypeMismatch;
        QTest::newRow("empty") << line << u""_s << ErrorName::TypeMismatch;
        QTest::newRow("too many") << line << u"32768"_s << ErrorName::Overflow;
        QTest::newRow("beyond the calendar")
            << u"31/12/9999 23:30:00\tD3C3\tR1"_s << u"1"_s << ErrorName::Overflow;
        QTest::newRow("before the calendar")
            << u"0100/01/01 00:30:00\tD3C3\tR1"_s << u"-1"_s << ErrorName::Overflow;
    }

    void offsetsThatAreNoHoursFail()
    {
        QFETCH(QString, line);
        QFETCH(QString, offset);
        QFETCH(ErrorName, error);
        try {
            (void)rdsSpyReception(line, u"87.5"_s, offset, months);
            QFAIL("no error");
        } catch (const RuntimeError &thrown) {
            QCOMPARE(thrown.name(), error);
        }
    }
};

QTEST_GUILESS_MAIN(TestRdsSpy)
#include "tst_rdsspy.moc"
