#include "support/mainwindow.h"

#include "backup/backups.h"
#include "backup/ziparchive.h"
#include "platform/files.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

constexpr int probably = 2;

const QByteArray mapJson =
    "{\"locations\":{\"1\":{\"name\":\"Ochsenkopf\",\"itu\":\"D\",\"lat\":50.03,\"lon\":11.81,"
    "\"stations\":[{\"id\":77,\"freq\":\"99.4\",\"pi\":\"D313\",\"ps\":\"BAYERN_3\",\"erp\":100},"
    "{\"id\":78,\"freq\":\"99.4\",\"pi\":\"D4F3\",\"ps\":\"OTHER\",\"erp\":1},"
    "{\"freq\":\"99,4\",\"pi\":\"D31\"}]}}}"_ba;

const QByteArray oneEntry = "D313|12/06/2010 18:22:05|Tropo|99.4|||note|BAYERN|||||\r\n"_ba;

class StationsWindow : public MainWindow
{
public:
    [[nodiscard]] ResultList &candidates() { return *find<ResultList>("candidates"); }
    [[nodiscard]] QStringList candidateLines()
    {
        QStringList lines;
        for (int line = 0; line < candidates().count(); ++line) {
            lines += candidates().text(line);
        }
        return lines;
    }

    void choose(int tab) { find<QTabBar>("resultTabs")->setCurrentIndex(tab); }

    /// Takes this file as the list of stations, by menu and dialog.
    void importFile(const QByteArray &content, const QString &name = u"list.json"_s)
    {
        directory.write(name, content);
        answers.doing([path = filePath(directory.path(), name)](QWidget *box) {
            auto *dialog = qobject_cast<QFileDialog *>(box);
            QVERIFY(dialog);
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(path);
            dialog->findChild<QDialogButtonBox *>()->buttons().first()->click();
        });
        trigger("menuImportStations");
    }

    [[nodiscard]] QByteArray stationFile() const { return directory.read(u"stations.lst"_s); }

    void doubleClickCandidate(int line)
    {
        const QPoint place = candidates().visualRect(candidates().model()->index(line, 1)).center();
        QTest::mouseClick(candidates().viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(candidates().viewport(), Qt::LeftButton, {}, place);
    }
};

} // namespace

class TestStations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void aTabShowsEachList()
    {
        StationsWindow window;
        window.start(oneEntry);
        const QStringList names {u"List1"_s, u"List2"_s, u"candidates"_s};
        for (int tab = 0; tab < 3; ++tab) {
            window.choose(tab);
            for (int list = 0; list < 3; ++list) {
                QCOMPARE(window.find<ResultList>(names[list])->isVisible(), tab == list);
            }
        }
        QVERIFY(window.candidates().emptyText().startsWith(u"A frequency with a PI code"));
        window.click("Command4");
        QCOMPARE(window.find<QTabBar>("resultTabs")->currentIndex(), 0);
    }

    void aListIsTakenFromAFile()
    {
        StationsWindow window;
        window.start(oneEntry);
        window.importFile(mapJson);
        QCOMPARE(window.answers.takeTexts().last(),
            u"The list holds 2 stations at 1 site in 1 country.\n\n1 line was refused.");
        QCOMPARE(window.stationFile(),
            "Quillon stations 1\r\n99400|D313||BAYERN_3|||Ochsenkopf|D|50.03|11.81|100|||77|\r\n"
            "99400|D4F3||OTHER|||Ochsenkopf|D|50.03|11.81|1|||78|\r\n"_ba);
        QCOMPARE(window.text("status"), u"The list holds 2 stations at 1 site in 1 country");
    }

    void anotherFileKeepsTheListThatIsThere()
    {
        StationsWindow window;
        window.start(oneEntry);
        window.directory.write(u"stations.lst"_s, "Quillon stations 1\r\n");
        window.importFile("{\"locations\":{}}");
        QVERIFY(window.answers.takeTexts().last().endsWith(u"holds no station that can be kept."));
        window.importFile("{\"a\":");
        QVERIFY(window.answers.takeTexts().last().contains(u"line 1, byte 6 of it: a value is missing"));
        window.calls.failWrite = ENOSPC;
        window.importFile(mapJson);
        QVERIFY(window.answers.takeTexts().last().contains(u"Disk full"));
        window.calls.failWrite = 0;
        QCOMPARE(window.stationFile(), "Quillon stations 1\r\n"_ba);
    }

    void theListThatWasThereIsInTheBackup()
    {
        TestDirectory state;
        StationsWindow window;
        window.backupFolder = state.path();
        window.directory.write(u"stations.lst"_s, "Quillon stations 1\r\n");
        window.start(oneEntry);
        const Backups backups(state.path(), window.form().config());
        window.importFile("{\"locations\":{}}");
        QVERIFY(backups.list().empty());
        window.importFile(mapJson);
        QCOMPARE(backups.list().size(), std::size_t(1));
        const auto kept = readZip(backups.list().front().path, ZipReading::Whole);
        const auto list = std::ranges::find(kept.members, u"stations.lst"_s, &ZipMember::name);
        QVERIFY(list != kept.members.end());
        QCOMPARE(list->bytes, "Quillon stations 1\r\n"_ba);
        QVERIFY(window.stationFile().contains("Ochsenkopf"));
    }

    void withoutABackupTheListIsTakenAllTheSame()
    {
        TestDirectory state;
        state.write(u"taken"_s, "a file where the folder would be");
        StationsWindow window;
        window.backupFolder = state.file(u"taken"_s);
        window.start(oneEntry);
        window.importFile(mapJson);
        QVERIFY(window.stationFile().contains("Ochsenkopf"));
        QVERIFY2(
            window.text("status").startsWith(u"No backup of today: "), qPrintable(window.text("status")));
        QVERIFY(window.answers.takeTexts().last().startsWith(u"The list holds 2 stations"));
    }

    void whatIsTypedStaysInTheForm()
    {
        StationsWindow window;
        window.start(oneEntry);
        window.clickRow(1);
        window.type("Text8", u"TYPED"_s);
        window.importFile(mapJson);
        QCOMPARE(window.text("Text8"), u"TYPED");
        QCOMPARE(window.form().selected(), 0);
        QCOMPARE(window.logbook(), oneEntry);
        window.click("Command3");
        QVERIFY(window.logbook().contains("|TYPED|"));
    }

    void aReadingThatIsStoppedKeepsTheListThatWas()
    {
        StationsWindow window;
        window.directory.write(u"stations.lst"_s, "Quillon stations 1\r\n");
        window.start(oneEntry);
        window.clickRow(1);
        window.type("Text8", u"TYPED"_s);
        QStringList enabled;
        QTimer stopping;
        connect(&stopping, &QTimer::timeout, &stopping, [&] {
            auto *stop = window.find<QPushButton>("autoStop");
            if (stop->isVisible()) {
                stopping.stop();
                for (const char *name : {"menuImportStations", "menuImportFile", "menuFMListAutoSearch",
                         "menuFileBackups", "menuEditUndo"}) {
                    if (window.find<QAction>(name)->isEnabled()) {
                        enabled += QString::fromLatin1(name);
                    }
                }
                if (window.enabled("Command3")) {
                    enabled += u"Command3"_s;
                }
                stop->click();
            }
        });
        stopping.start(0);
        window.importFile("{\"locations\":{}, \"filling\":\"" + QByteArray(3'000'000, 'x') + "\"}");
        QCOMPARE(enabled, QStringList());
        QCOMPARE(
            window.text("status"), u"The list of stations was not read to its end; the one before stays");
        QCOMPARE(window.stationFile(), "Quillon stations 1\r\n"_ba);
        QCOMPARE(window.text("Text8"), u"TYPED");
        QVERIFY(window.enabled("Command3"));
        QVERIFY(window.find<QAction>("menuImportStations")->isEnabled());
    }

    void theColumnsOfACsvAreAskedFor()
    {
        StationsWindow window;
        window.start(oneEntry);
        window.directory.write(
            u"list.csv"_s, "99,4;D313;BAYERN 3;D;Oberfranken, Ochsenkopf;100;50,03;11.81\n");
        window.answers.doing([path = filePath(window.directory.path(), u"list.csv"_s)](QWidget *box) {
            auto *dialog = qobject_cast<QFileDialog *>(box);
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(path);
            dialog->findChild<QDialogButtonBox *>()->buttons().first()->click();
        });
        QString missing;
        window.answers.doing([&missing](QWidget *box) {
            auto *table = box->findChild<QTableWidget *>(u"beginning"_s);
            auto *ok = box->findChild<QPushButton *>(u"OKButton"_s);
            QVERIFY(!ok->isEnabled());
            missing = box->findChild<QLabel *>(u"missing"_s)->text();
            QCOMPARE(table->item(1, 4)->text(), u"Oberfranken, Ochsenkopf");
            const QStringList fields {u"Frequency (MHz)"_s, u"PI code"_s, u"RDS name"_s, u"Country"_s,
                u"Site"_s, u"Power (kW)"_s, u"Latitude"_s, u"Longitude"_s};
            for (int column = 0; column < fields.size(); ++column) {
                qobject_cast<QComboBox *>(table->cellWidget(0, column))->setCurrentText(fields[column]);
            }
            QVERIFY(ok->isEnabled());
            ok->click();
        });
        window.trigger("menuImportStations");
        QCOMPARE(missing,
            u"Say which column holds: Frequency (MHz), Site, Country, Latitude, Longitude, PI code or RDS "
            u"name");
        QCOMPARE(window.stationFile(),
            "Quillon stations 1\r\n99400|D313||BAYERN_3|||Oberfranken, Ochsenkopf|D|50.03|11.81|100||||\r\n"_ba);
    }

    void theCandidatesFollowTheForm()
    {
        StationsWindow window;
        window.directory.write(
            u"LOGBOOK.INI"_s, "HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n");
        window.directory.write(u"stations.lst"_s,
            "Quillon stations 1\r\n99400|D313||BAYERN_3|||Ochsenkopf|D|50.03|11.81|100|||77|\r\n");
        window.start(oneEntry);
        window.clickRow(1);
        QCOMPARE(window.candidates().count(), 0);
        window.choose(probably);
        QCOMPARE(window.candidateLines(),
            QStringList(u"100\tOchsenkopf\tD\t855.3\tPI and name\t96\t100\tBAYERN 3"_s));
        window.type("Text9", u"99.5"_s);
        QTRY_COMPARE(window.candidates().count(), 0);
        QCOMPARE(window.candidates().emptyText(), u"No station of the list or the log fits.");
        window.type("Text9", u"99.40"_s);
        window.type("Text1", {});
        QTRY_COMPARE(window.candidates().count(), 1);
        QCOMPARE(window.candidates().text(0).section(u'\t', 4, 4), u"name");
    }

    void theCandidatesFollowTheLog()
    {
        StationsWindow window;
        window.start(oneEntry);
        window.clickRow(1);
        window.choose(probably);
        QCOMPARE(window.candidates().count(), 0);
        LogEntry heard = window.form().log().entry(0);
        heard.transmitter = u"Ochsenkopf"_s;
        heard.country = u"D"_s;
        window.form().document().commit({u"Add"_s, LogChange::addition(heard), {}});
        QTRY_COMPARE(window.candidates().count(), 1);
        QVERIFY2(
            window.candidates().text(0).contains(u"Ochsenkopf"_s), qPrintable(window.candidates().text(0)));
        window.trigger("menuEditUndo");
        QTRY_COMPARE(window.candidates().count(), 0);
    }

    void aDoubleClickTakesACandidateOver()
    {
        StationsWindow window;
        window.directory.write(u"stations.lst"_s,
            "Quillon stations 1\r\n99400|D413||BAYERN_3|||Ochsenkopf|D|50.03|11.81|100|||77|\r\n");
        window.start("D313|12/06/2010 18:22:05|Tropo|99.4|||note|BAYERN|||||\r\n"
                     "D513|12/06/2010 18:30:00|Tropo|99.4|||note|BAY|||||\r\n");
        window.clickRow(2);
        window.choose(probably);
        QCOMPARE(window.candidates().count(), 1);
        const QByteArray before = window.logbook();
        window.answers.press(QMessageBox::No);
        window.doubleClickCandidate(0);
        QCOMPARE(window.logbook(), before);
        window.answers.press(QMessageBox::Yes);
        window.doubleClickCandidate(0);
        QCOMPARE(window.answers.takeTexts(),
            (QStringList {u"Update record with search results?"_s, u"Update record with search results?"_s}));
        QVERIFY2(
            window.logbook().contains("D513|12/06/2010 18:30:00|Tropo|99.4|Ochsenkopf|D|note|BAYERN 3|100||"),
            window.logbook().constData());
        QVERIFY(window.logbook().contains("|77|"));
        QCOMPARE(window.transmitterFile(), "Ochsenkopf|D|50.03|11.81||\r\n"_ba);
        window.trigger("menuEditUndo");
        QCOMPARE(window.logbook(), before);
    }

    void anUnreadableListIsToldOnce()
    {
        StationsWindow window;
        window.directory.write(u"stations.lst"_s, "something else\r\n");
        window.start(oneEntry);
        window.clickRow(1);
        window.choose(probably);
        QCOMPARE(window.answers.takeTexts().size(), 1);
        window.choose(0);
        window.choose(probably);
        QCOMPARE(window.answers.takeTexts().size(), 0);
    }
};

QTEST_MAIN(TestStations)
#include "tst_stations.moc"
