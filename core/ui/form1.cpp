#include "core/ui/form1.h"

#include "core/ui/form1_stations.h"
#include "core/ui/results.h"
#include "net/inet1.h"
#include "stats/novelty.h"
#include "ui/guard.h"
#include "ui/menuicons.h"
#include "ui/messages.h"
#include "ui/ownroom.h"
#include "ui/statustext.h"
#include "ui/utcclock.h"
#include "ui_form1.h"

#include <QCloseEvent>
#include <QDialog>
#include <QDockWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>

#include <utility>

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
    , m_backups(options.backupFolder, m_config, *options.fileCalls)
    , m_document(m_config, options.regional, *options.fileCalls)
    , m_rows(m_document.log(), options.regional.months)
    , m_inet(new Inet1(options.regional.codePage, this))
{
    m_config.whenRead([this] {
        showTitle();
        m_form->measureFrom(m_config.settings());
        showLegs();
    });
    m_ui->setupUi(this);
    m_form = m_ui->formPane;
    m_results = new Results(this);
    m_form->addPane(*m_results, m_results->tabStops());
    m_form->prepare(options.regional, m_document.sites());
    m_form->completeFrom(m_document.log());
    resize(size().boundedTo(screen()->availableSize() - frameAllowance));
    addStatusBar();
    m_ui->Grid1->setLogRows(m_rows);
    QSizePolicy policy = m_ui->Grid1->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_ui->Grid1->setSizePolicy(policy);
    m_ui->mainSplitter->setSizes({m_form->minimumSizeHint().height() + 40, height()});
    m_ui->mainSplitter->setStretchFactor(0, 0);
    m_ui->mainSplitter->setStretchFactor(1, 1);
    wireEntryForm();
    wireMenus();
    wireNovelty();
    wireDocument();
    wireFilter();
    wireView();
    wireFirstSteps();
    wireBackups();
    m_probably = std::make_unique<Probably>(*this);
    giveMenuIcons(*m_ui->menubar);
}

Form1::~Form1()
{
    // What goes with the window is hidden first, and would tell a window that is half gone.
    for (QDockWidget *dock : findChildren<QDockWidget *>()) {
        dock->disconnect(this);
    }
}

void Form1::addStatusBar()
{
    const auto named = [](auto *label, const QString &name, const QString &accessibleName) {
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
    m_autoStop = new QPushButton(u"Stop"_s, this);
    m_autoStop->setObjectName(u"autoStop"_s);
    m_autoStop->setToolTip(u"End after the present entry; what was found is kept"_s);
    m_autoStop->setAutoDefault(false);
    // The text begins below the grid's edge.
    m_status->setContentsMargins(4, 0, 4, 0);
    m_ui->statusbar->addWidget(new OwnRoom(*m_status), 3);
    m_news = named(new ElidedLabel(this), u"news"_s, u"What the log had not before"_s);
    m_ui->statusbar->addWidget(m_news, 2);
    for (QWidget *part : std::initializer_list<QWidget *> {
             m_proclogs, m_progress, m_autoStop, new UtcClock(this), m_version}) {
        m_ui->statusbar->addPermanentWidget(part);
    }
    m_applicationDir = label(u"applicationDir"_s, u"Application directory"_s);
    m_mapDir = label(u"mapDir"_s, u"Map directory"_s);
    for (QWidget *hidden : std::initializer_list<QWidget *> {
             m_news, m_proclogs, m_progress, m_autoStop, m_applicationDir, m_mapDir}) {
        hidden->hide();
    }
}

void Form1::closeEvent(QCloseEvent *event)
{
    if (m_importing) {
        // The import ends after the present reception; then the window can be closed.
        findChild<QDialog *>(u"importRDSSpy"_s)->reject();
        event->ignore();
        return;
    }
    const QString failure = m_document.unsavedFailure();
    if (!failure.isEmpty()
        && !askYesNo(this,
            u"Quillon could not write all you logged:\n\n"_s + failure
                + u"\n\nLeave all the same? What is not on the disk is lost."_s,
            u"Not Saved"_s)) {
        event->ignore();
        return;
    }
    // The work that these wait for ends with the program.
    for (const HeardReception &reception : std::exchange(m_waiting, {})) {
        guarded(this, [&] { logNow(reception); });
    }
    keepLook();
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

} // namespace quillon
