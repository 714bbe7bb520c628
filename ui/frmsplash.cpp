#include "ui/frmsplash.h"

#include "ui/desktop.h"
#include "ui/version.h"
#include "ui_frmsplash.h"

#include <QEvent>
#include <QKeyEvent>

#include <curl/curl.h>

// The linker leaves the pictures of a static library out when nothing asks for them.
static void loadPictures()
{
    Q_INIT_RESOURCE(ui);
}

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// Held for the mnemonic of a button; no key by itself.
bool isModifier(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr
        || key == Qt::Key_Meta;
}

} // namespace

frmSplash::frmSplash(QWidget *parent, Use use, const QString &propagationUrl)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::frmSplash>())
{
    loadPictures();
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    m_ui->Frame1->installEventFilter(this);
    m_ui->Label2->installEventFilter(this);
    connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(m_ui->openDirectory, &QPushButton::clicked, this, [this] { openDirectory_Click(); });
    if (use == Use::WhileLoading) {
        setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
        m_ui->Command1->hide();
        m_ui->libraries->hide();
    }
    // The button would keep some keys for itself.
    m_ui->Command1->setFocus();
    m_ui->Command1->installEventFilter(this);
    tellDirectory({});
    setLink(propagationUrl);
    Form_Load();
}

frmSplash::~frmSplash() = default;

void frmSplash::setLink(const QString &propagationUrl)
{
    m_propagationUrl = propagationUrl;
    m_ui->Label2->setText(propagationUrl);
    m_ui->Label2->setHidden(propagationUrl.isEmpty());
}

void frmSplash::tellDirectory(const QString &directory)
{
    m_directory = directory;
    m_ui->directory->setText(u"Your files are in "_s + directory);
    m_ui->directory->setHidden(directory.isEmpty());
    m_ui->openDirectory->setHidden(directory.isEmpty());
}

void frmSplash::Form_Load()
{
    QPixmap picture(u":/icons/splash.png"_s);
    picture.setDevicePixelRatio(2);
    m_ui->Image1->setPixmap(picture);
    QFont typewriter(u"Courier New"_s);
    typewriter.setStyleHint(QFont::Monospace);
    typewriter.setPixelSize(fontInfo().pixelSize() * 4 / 3);
    typewriter.setBold(true);
    m_ui->Label1->setFont(typewriter);
    m_ui->Label1->setText(versionLabel());
    m_ui->libraries->setText(u"With Qt and Qt Charts %1, libcurl %2"_s.arg(
        QLatin1StringView(qVersion()), QLatin1StringView(curl_version_info(CURLVERSION_NOW)->version)));
    QFont link = m_ui->Label2->font();
    link.setUnderline(true);
    m_ui->Label2->setFont(link);
    showFocusOfLink(false);
}

// Texts in several lines need room, and do not ask for it by themselves.
void frmSplash::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    resize(width(), qMax(height(), layout()->totalHeightForWidth(width())));
}

// A label does not show by itself that it has the keyboard.
void frmSplash::showFocusOfLink(bool focus)
{
    m_ui->Label2->setAutoFillBackground(focus);
    m_ui->Label2->setBackgroundRole(QPalette::Highlight);
    m_ui->Label2->setForegroundRole(focus ? QPalette::HighlightedText : QPalette::Link);
}

// Close.
void frmSplash::Command1_Click()
{
    close();
}

// Any key closes the window, but for those that lead to its link and its buttons.
void frmSplash::Form_KeyPress()
{
    close();
}

// A click beside the link closes the window.
void frmSplash::Frame1_Click()
{
    close();
}

// The link: opens the radio-propagation page.
void frmSplash::Label2_Click()
{
    HyperJump(m_propagationUrl);
    close();
}

// Open Folder: the folder with the user's files.
void frmSplash::openDirectory_Click()
{
    openFile(m_directory);
    close();
}

void frmSplash::keyPressEvent(QKeyEvent *event)
{
    event->accept();
    if (!isModifier(event->key())) {
        Form_KeyPress();
    }
}

bool frmSplash::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->Label2 && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        showFocusOfLink(event->type() == QEvent::FocusIn);
    }
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (watched == m_ui->Label2
            && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)) {
            Label2_Click();
            return true;
        }
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab || isModifier(key)) {
            return false;
        }
        Form_KeyPress();
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease && watched != m_ui->Command1) {
        if (watched == m_ui->Label2) {
            Label2_Click();
            return true;
        }
        Frame1_Click();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace quillon
