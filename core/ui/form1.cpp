#include "core/ui/form1.h"

#include "core/logbookfile.h"
#include "core/propagation.h"
#include "platform/numbers.h"
#include "txdb/countries.h"
#include "txdb/countrynames.h"
#include "ui/frmsplash.h"
#include "ui/guard.h"
#include "ui/inet1.h"
#include "ui/messages.h"
#include "ui/onelinefields.h"
#include "ui/statustext.h"
#include "ui/version.h"
#include "ui_form1.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QScreen>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// What a window manager adds around a window, so that the whole of it is on a small screen.
constexpr QSize frameAllowance(8, 36);

} // namespace

Form1::Form1(const Form1Options &options)
    : m_ui(std::make_unique<Ui::Form1>())
    , m_options(options)
    , m_config(options.applicationDir, options.regional.codePage, *options.fileCalls)
    , m_logbookLines(m_log, options.regional.codePage)
    , m_logbookFile(*options.fileCalls)
    , m_transmitterFile(*options.fileCalls)
    , m_inet(new Inet1(options.regional.codePage, this))
{
    m_config.whenRead([this] { showTitle(); });
    m_ui->setupUi(this);
    keepFieldsOnOneLine(*this);
    resize(size().boundedTo(screen()->availableSize() - frameAllowance));
    addStatusBar();
    m_ui->List1->setHeadings({{u"PI Code"_s, u"D3C3"_s, true},
        {u"Date/Time"_s, u"30/08/2008 20:08:00"_s, true}, {u"Prop"_s, u"Tropo"_s, true},
        {u"Freq"_s, u"107.90"_s, true}, {u"Transmitter"_s, u"Hohenpeissenberg"_s},
        {u"Country"_s, u"TBD"_s, true}, {u"RDS Name"_s, u"RADIO_88"_s, true}, {u"Power"_s, u"100"_s, true}});
    m_ui->List2->setHeadings({{u"Freq"_s, u"107.90"_s, true}, {u"PI Code"_s, u"D3C3"_s, true},
        {u"RDS Name"_s, u"RADIO_88"_s, true}, {u"Country"_s, u"TBD"_s, true},
        {u"Transmitter"_s, u"Hohenpeissenberg"_s}, {u"Power"_s, u"100"_s, true},
        {u"Latitude"_s, u"-12.3456"_s, true}, {u"Longitude"_s, u"-123.4567"_s, true},
        {u"UID"_s, u"1234567"_s, true}});
    m_ui->Grid1->setEmptyText(
        u"No receptions yet. Press F5 to log the first one quickly, or Ctrl+N to type all of it."_s);
    QSizePolicy policy = m_ui->Grid1->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_ui->Grid1->setSizePolicy(policy);
    m_ui->formSplitter->setSizes({360, 330, 420});
    m_ui->mainSplitter->setSizes({m_ui->formPane->minimumSizeHint().height() + 40, height()});
    m_ui->mainSplitter->setStretchFactor(0, 0);
    m_ui->mainSplitter->setStretchFactor(1, 1);
    for (QComboBox *combo : {m_ui->Combo2, m_ui->Combo3}) {
        // What is typed stays as it is typed.
        combo->setCompleter(nullptr);
    }
    showList1();
    wireEntryForm();
    wireMenus();
}

Form1::~Form1() = default;

void Form1::addStatusBar()
{
    const auto named = [](QLabel *label, const QString &name, const QString &accessibleName) {
        label->setObjectName(name);
        label->setAccessibleName(accessibleName);
        label->setTextFormat(Qt::PlainText);
        return label;
    };
    const auto label = [&](const QString &name, const QString &accessibleName) {
        return named(new QLabel(this), name, accessibleName);
    };
    m_status = named(new StatusText(this), u"status"_s, u"Status"_s);
    m_proclogs = label(u"proclogs"_s, u"Work in progress"_s);
    m_proclogs->setText(u"PROCESSING LOGS PLEASE WAIT..."_s);
    m_version = label(u"version"_s, u"Version"_s);
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(u"progress"_s);
    m_progress->setAccessibleName(u"Progress"_s);
    m_progress->setMaximumWidth(260);
    // The text begins below the grid's edge.
    m_status->setContentsMargins(4, 0, 4, 0);
    m_ui->statusbar->addWidget(m_status, 1);
    m_ui->statusbar->addPermanentWidget(m_proclogs);
    m_ui->statusbar->addPermanentWidget(m_progress);
    m_ui->statusbar->addPermanentWidget(m_version);
    m_proclogs->hide();
    m_progress->hide();
    m_applicationDir = label(u"applicationDir"_s, u"Application directory"_s);
    m_applicationDir->hide();
    m_mapDir = label(u"mapDir"_s, u"Map directory"_s);
    m_mapDir->hide();
}

void Form1::Form_Load()
{
    m_applicationDir->setText(m_config.applicationDir());
    const QPointer<frmSplash> splash = new frmSplash(this, frmSplash::Use::WhileLoading, {});
    splash->show();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    QWidget *const messageParent = splash;

    guarded(messageParent, [this] {
        if (!m_config.exists()) {
            m_config.createDefaultConfig();
        }
    });
    for (const QStringView mode : propagationModes) {
        m_ui->Combo2->addItem(mode.toString());
    }
    m_ui->Combo2->setCurrentIndex(-1);
    guarded(messageParent, [this] { m_config.readConfig(); });
    if (splash) {
        splash->setLink(m_config.settings().propagationUrl);
    }
    m_mapDir->setText(m_config.settings().mapDirectory);
    m_ui->Grid1->writeGridHeader();
    lockEntryForm();
    guarded(messageParent, [this] { loadLogbookFile(); });
    populateGrid();
    guarded(messageParent, [this] { loadTransmitterList(); });
    guarded(messageParent, [this] { loadCountryList(); });
    m_decimalComma = DecimalCommaLocale(m_options.regional.numbers);
    m_version->setText(versionLabel());
    if (splash) {
        splash->close();
    }
}

// Tries once more to write what is not on the disk. What could not be written and why; empty when all is
// there.
QString Form1::unsavedFailure()
{
    QStringList failures;
    const auto retry = [&](bool unsaved, auto save) {
        if (unsaved) {
            try {
                save();
            } catch (const RuntimeError &error) {
                failures += error.text();
            }
        }
    };
    retry(m_logUnsaved, [this] { saveLogbook(); });
    retry(m_transmittersUnsaved, [this] { saveTransmitterList(); });
    return failures.join(u'\n');
}

void Form1::closeEvent(QCloseEvent *event)
{
    const QString failure = unsavedFailure();
    if (!failure.isEmpty()
        && !askYesNo(this,
            u"Quillon could not write all you logged:\n\n"_s + failure
                + u"\n\nLeave all the same? What is not on the disk is lost."_s,
            u"Not Saved"_s)) {
        event->ignore();
        return;
    }
    // A request under way ends here; whoever waits for it gives up quietly.
    m_inet->abort();
    event->accept();
}

void Form1::showTitle()
{
    if (m_config.settings().titleCallsign) {
        setWindowTitle(u"Quillon - "_s + *m_config.settings().titleCallsign);
    }
}

void Form1::loadLogbookFile()
{
    const QString path = m_config.path(m_config.settings().logbookFileName);
    try {
        if (loadLogbook(m_log, path, m_options.regional, m_logbookFile) == LogbookLoading::NotLoaded) {
            m_status->setText(
                u"The logbook %1 was not loaded: its first line has an unknown layout"_s.arg(path));
        }
        // The first save is then as quick as all the others.
        m_logbookLines.prepare();
    } catch (const RuntimeError &) {
        m_status->setText(u"The logbook %1 was not loaded whole: %2 entries were read"_s.arg(
            path, QString::number(m_log.count())));
        throw;
    }
}

void Form1::loadTransmitterList()
{
    const QString path = m_config.path(u"tx.lst"_s);
    removeLeftover(path);
    const auto state = fileState(path);
    if (!state) {
        return;
    }
    if (readTransmitters(m_transmitters, readFile(path), m_options.regional.codePage, path)) {
        m_transmitterFile.readWhole(path, *state);
    }
    populateGrid();
}

void Form1::loadCountryList()
{
    m_ui->Combo3->clear();
    const auto path = findFile(m_config.applicationDir(), u"country.lst"_s);
    if (!path) {
        return;
    }
    m_ui->Combo3->addItems(readCountries(readFile(*path), m_options.regional.codePage));
    for (int i = 0; i < m_ui->Combo3->count(); ++i) {
        m_ui->Combo3->setItemData(i, countryName(m_ui->Combo3->itemText(i)), Qt::ToolTipRole);
    }
    m_ui->Combo3->setCurrentIndex(-1);
}

} // namespace quillon
