#include "geo/ui/mapdock.h"
#include "geo/ui/mappicturedialog.h"
#include "geo/ui/mapview.h"
#include "support/accessibility.h"
#include "support/dialogs.h"
#include "support/faultycalls.h"
#include "support/savedialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

MapData someData()
{
    MapData data;
    data.home = GeoPosition {51.34, 6.57};
    MapSite spain {u"Sevilla"_s, u"Spain"_s, {37.4, -6.0}, {}};
    spain.modes[esMode] = {3, 7, *fromCivil({2026, 6, 5, 17, 30, 0}), false};
    data.sites = {spain};
    data.unplaced = {4, 11, 12};
    data.sitesWithoutPlace = 2;
    return data;
}

class Shown
{
public:
    explicit Shown(FileCalls &calls = FileCalls::real())
        : m_dock(nullptr, calls)
    {
        m_dock.resize(700, 500);
        m_dock.show();
        (void)QTest::qWaitForWindowExposed(&m_dock);
    }

    MapDock *operator->() { return &m_dock; }
    MapDock &operator*() { return m_dock; }
    void click(const QString &name)
    {
        QTest::mouseClick(m_dock.findChild<QToolButton *>(name), Qt::LeftButton);
    }

private:
    MapDock m_dock;
};

// Answers the question for the size, then that for the file.
void answer(DialogAnswers &answers, QSize size, const QString &path, int filter = -1)
{
    answers.doing([size](QWidget *box) {
        box->findChild<QSpinBox *>(u"pictureWidth"_s)->setValue(size.width());
        box->findChild<QSpinBox *>(u"pictureHeight"_s)->setValue(size.height());
        box->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save)->click();
    });
    saveAs(answers, path, filter);
}

} // namespace

class TestMapDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void everyControlHasANameAndRoom()
    {
        Shown dock;
        dock->setData(someData());
        QCOMPARE(dock->objectName(), u"mapDock"_s);
        QVERIFY(dock->findChild<MapView *>(u"map"_s));
        QCOMPARE(withoutName(*dock), QStringList());
        QCOMPARE(cutOff(*dock), QStringList());
    }

    void whatHasNoPlaceIsCountedWithALink()
    {
        Shown dock;
        dock->setData(someData());
        auto *note = dock->findChild<QLabel *>(u"mapNote"_s);
        QVERIFY(note->isVisible());
        QVERIFY(note->text().startsWith(u"Not on the map: 3 receptions, 2 sites without coordinates. <a"));
        const QSignalSpy wanted(&*dock, &MapDock::unplacedWanted);
        Q_EMIT note->linkActivated(u"#"_s);
        QCOMPARE(wanted.count(), 1);
        QCOMPARE(wanted[0][0].value<QList<qint32>>(), (QList<qint32> {4, 11, 12}));
        MapData data = someData();
        data.unplaced.clear();
        data.sitesWithoutPlace = 0;
        dock->setData(data);
        QVERIFY(!note->isVisible());
    }

    void whatComesWhileItIsHiddenIsShownLater()
    {
        Shown dock;
        dock->hide();
        dock->setData(someData());
        QVERIFY(dock->map().scene().dots().empty());
        dock->show();
        QCOMPARE(dock->map().scene().dots().size(), std::size_t(1));
    }

    void theButtonsWork()
    {
        Shown dock;
        dock->setData(someData());
        const MapViewport whole = dock->map().viewport();
        dock.click(u"mapZoomIn"_s);
        QVERIFY(dock->map().viewport().kmPerPixel() < whole.kmPerPixel());
        dock.click(u"mapZoomOut"_s);
        dock.click(u"mapZoomOut"_s);
        QVERIFY(dock->map().viewport().kmPerPixel() > whole.kmPerPixel());
        dock.click(u"mapShowAll"_s);
        QCOMPARE(dock->map().viewport(), whole);
        dock.click(u"mapClouds"_s);
        QVERIFY(dock->map().clouds());
        dock.click(u"mapCopy"_s);
        const QSize pixels = (QSizeF(dock->map().size()) * dock->map().devicePixelRatioF()).toSize();
        QCOMPARE(QApplication::clipboard()->image().size(), pixels);
    }

    void savesAPicture_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("filter");
        QTest::addColumn<QString>("written");
        QTest::newRow("PNG") << u"my map.png"_s << -1 << u"my map.png"_s;
        QTest::newRow("SVG") << u"my map.svg"_s << -1 << u"my map.svg"_s;
        QTest::newRow("no suffix") << u"my map"_s << -1 << u"my map.png"_s;
        QTest::newRow("no suffix, SVG chosen") << u"my map"_s << 1 << u"my map.svg"_s;
    }

    void savesAPicture()
    {
        QFETCH(QString, name);
        QFETCH(int, filter);
        QFETCH(QString, written);
        const QTemporaryDir directory;
        Shown dock;
        dock->setData(someData());
        const QSignalSpy saved(&*dock, &MapDock::pictureSaved);
        DialogAnswers answers;
        answer(answers, {1234, 567}, directory.filePath(name), filter);
        dock.click(u"mapSave"_s);
        const QString path = directory.filePath(written);
        QCOMPARE(saved.count(), 1);
        QCOMPARE(saved[0][0].toString(), path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        if (written.endsWith(u".svg")) {
            QVERIFY(bytes.contains("viewBox=\"0 0 1234 567\""));
        } else {
            QCOMPARE(QImage::fromData(bytes).size(), QSize(1234, 567));
        }
    }

    void aPictureIsNotWrittenOverUnasked()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"map.png"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("mine");
        file.close();
        Shown dock;
        dock->setData(someData());
        DialogAnswers answers;
        answer(answers, {300, 200}, directory.filePath(u"map"_s));
        answers.press(QMessageBox::No);
        answers.cancel();
        dock.click(u"mapSave"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), "mine"_ba);
    }

    void whicheverCallFailsThePictureIsTheOldOneOrTold()
    {
        for (int failing = 1;; ++failing) {
            const QTemporaryDir directory;
            QFile file(directory.filePath(u"map.png"_s));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("mine");
            file.close();
            FaultyCalls calls(failing);
            Shown dock(calls);
            dock->setData(someData());
            const QSignalSpy saved(&*dock, &MapDock::pictureSaved);
            DialogAnswers answers;
            answer(answers, {300, 200}, file.fileName());
            answers.press(QMessageBox::Yes);
            answers.press(QMessageBox::Ok);
            dock.click(u"mapSave"_s);
            const bool isTold = answers.takeTexts().join(u'\n').contains(u"Run-time error: "_s);
            QCOMPARE(isTold, calls.failed());
            QCOMPARE(saved.count(), isTold ? 0 : 1);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            QVERIFY(bytes == "mine" || QImage::fromData(bytes).size() == QSize(300, 200));
            QCOMPARE(calls.open(), 0);
            if (!calls.failed()) {
                QVERIFY(failing > 4);
                break;
            }
        }
    }

    void whatCannotBeSavedIsTold()
    {
        const QTemporaryDir directory;
        Shown dock;
        dock->setData(someData());
        const QSignalSpy saved(&*dock, &MapDock::pictureSaved);
        DialogAnswers answers;
        answer(answers, {300, 200}, directory.filePath(u"missing/map.png"_s));
        answers.press(QMessageBox::Ok);
        dock.click(u"mapSave"_s);
        QCOMPARE(saved.count(), 0);
        QVERIFY(answers.takeTexts().join(u'\n').contains(u"Run-time error: "_s));
    }

    void cancellingSavesNothing()
    {
        Shown dock;
        dock->setData(someData());
        const QSignalSpy saved(&*dock, &MapDock::pictureSaved);
        DialogAnswers answers;
        answers.cancel();
        dock.click(u"mapSave"_s);
        QCOMPARE(saved.count(), 0);
    }
};

QTEST_MAIN(TestMapDock)
#include "tst_mapdock.moc"
