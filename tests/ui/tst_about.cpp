#include "ui/frmsplash.h"

#include <QDesktopServices>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QUrl>

#include <curl/curl.h>

using namespace quillon;
using namespace Qt::StringLiterals;

// Takes the place of the desktop that opens what it is handed.
class Desktop : public QObject
{
    Q_OBJECT

public:
    Desktop() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler(u"file"_s); }

    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl &url) { opened += url; }
};

class About : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsVersionLibrariesLicenceAndDirectory();
    void opensTheDirectoryAndCloses();
    void theSplashShowsNoButton();
};

static QString textOf(const QWidget &window, const QString &name)
{
    return window.findChild<QLabel *>(name)->text();
}

void About::tellsVersionLibrariesLicenceAndDirectory()
{
    frmSplash window(nullptr, frmSplash::Use::About, u"https://example.org"_s);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.tellDirectory(u"/home/dx/log & more"_s);
    window.show();
    QCOMPARE(textOf(window, u"Label1"_s), u"Quillon V2.0.0"_s);
    QCOMPARE(textOf(window, u"libraries"_s),
        u"With Qt and Qt Charts %1, libcurl %2"_s.arg(QString::fromLatin1(qVersion()),
            QString::fromLatin1(curl_version_info(CURLVERSION_NOW)->version)));
    QVERIFY(textOf(window, u"Label4"_s).contains(u"GNU GPL, version 3 or later"_s));
    QCOMPARE(textOf(window, u"directory"_s), u"Your files are in /home/dx/log & more"_s);
    for (const QString &name : {u"libraries"_s, u"directory"_s}) {
        QVERIFY(window.findChild<QLabel *>(name)->isVisible());
    }
    QVERIFY(window.findChild<QPushButton *>(u"openDirectory"_s)->isVisible());
}

void About::opensTheDirectoryAndCloses()
{
    Desktop desktop;
    const QPointer<frmSplash> window =
        new frmSplash(nullptr, frmSplash::Use::About, u"https://example.org"_s);
    window->tellDirectory(u"/home/listener/dx"_s);
    window->show();
    QTest::mouseClick(window->findChild<QPushButton *>(u"openDirectory"_s), Qt::LeftButton);
    QCOMPARE(desktop.opened, QList<QUrl> {QUrl::fromLocalFile(u"/home/listener/dx"_s)});
    QTRY_VERIFY(!window);
}

void About::theSplashShowsNoButton()
{
    frmSplash window(nullptr, frmSplash::Use::WhileLoading, u"https://example.org"_s);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    const auto buttons = window.findChildren<QPushButton *>();
    QCOMPARE(buttons.size(), 2);
    for (const QPushButton *button : buttons) {
        QVERIFY2(!button->isVisible(), qPrintable(button->objectName()));
    }
}

QTEST_MAIN(About)
#include "tst_about.moc"
