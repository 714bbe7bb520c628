#include "ui/form2.h"

#include "core/config.h"
#include "platform/windowspath.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/onelinefields.h"
#include "ui/problemwatch.h"
#include "ui/scrolledpage.h"
#include "ui_form2.h"

#include <QFileDialog>
#include <QFocusEvent>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

void showDirectoryHint(QLabel *label, const QString &directory)
{
    const QString resolved = resolveDirectory(directory, WindowsPlaces::ofProcess());
    label->setText(resolved == directory ? QString() : u"Looked for as "_s + resolved);
    label->setVisible(!label->text().isEmpty());
}

// Another window or a menu takes the focus only for a while.
bool isForAWhile(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason
        || reason == Qt::MenuBarFocusReason;
}

} // namespace

Form2::Form2(QWidget *parent, Config &config)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::Form2>())
    , m_config(config)
{
    m_ui->setupUi(this);
    m_page = new ScrolledPage(*m_ui->layout);
    keepFieldsOnOneLine(*this);
    watchForProblems(*m_ui->problem, config.codePage(),
        {{m_ui->Text1, FieldKind::Setting}, {m_ui->Text2, FieldKind::Setting},
            {m_ui->latitude, FieldKind::HomeLatitude}, {m_ui->longitude, FieldKind::HomeLongitude},
            {m_ui->omid, FieldKind::Setting}, {m_ui->email, FieldKind::Setting},
            {m_ui->rdsdir, FieldKind::Setting}, {m_ui->rdsspydir, FieldKind::Setting}});
    setAttribute(Qt::WA_DeleteOnClose);
    connect(m_ui->Command1, &QPushButton::clicked, this,
        [this] { guarded(this, [this] { Form2_Command1_Click(); }); });
    connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Form2_Command2_Click(); });
    m_ui->rdsdir->installEventFilter(this);
    connect(m_ui->browseRdsdx, &QPushButton::clicked, this, [this] {
        guarded(this, [this] { browse(m_ui->rdsdir, u"Choose the directory of the RDSDX logs"_s); });
    });
    connect(m_ui->browseRdsSpy, &QPushButton::clicked, this, [this] {
        guarded(this, [this] { browse(m_ui->rdsspydir, u"Choose the directory of the RDS Spy logs"_s); });
    });
    for (const QLineEdit *field : {m_ui->rdsdir, m_ui->rdsspydir}) {
        connect(field, &QLineEdit::textChanged, this, [this] { showHints(); });
    }
    alignLabels();
    fill();
    showHints();
}

Form2::~Form2() = default;

void Form2::fill()
{
    const Settings &settings = m_config.settings();
    m_ui->Text1->setText(settings.callsign);
    m_ui->latitude->setText(settings.homeLatitude);
    m_ui->longitude->setText(settings.homeLongitude);
    m_ui->Text2->setText(settings.logbookFileName);
    m_ui->email->setText(settings.email);
    m_ui->omid->setText(settings.omid);
    m_ui->rdsdir->setText(settings.rdsdxDirectory);
    m_ui->rdsspydir->setText(settings.rdsSpyDirectory);
    (settings.inMiles() ? m_ui->Option2 : m_ui->Option1)->setChecked(true);
    // The Tab key comes to the chosen one, the arrows to the other.
    (settings.inMiles() ? m_ui->Option1 : m_ui->Option2)->setFocusPolicy(Qt::ClickFocus);
}

// The fields of all frames begin below each other.
void Form2::alignLabels()
{
    const QList<QLabel *> labels {m_ui->Label1, m_ui->Label2, m_ui->LabelLat, m_ui->LabelLon, m_ui->LabelOmid,
        m_ui->LabelEmail, m_ui->LabelRdsdx, m_ui->LabelRdsSpy};
    int widest = 0;
    for (const QLabel *label : labels) {
        widest = qMax(widest, label->sizeHint().width());
    }
    for (QLabel *label : labels) {
        label->setMinimumWidth(widest);
    }
}

void Form2::showHints()
{
    showDirectoryHint(m_ui->rdsdirHint, m_ui->rdsdir->text());
    showDirectoryHint(m_ui->rdsspydirHint, m_ui->rdsspydir->text());
    // Hints that came up need room.
    m_page->fitWindow();
}

void Form2::browse(QLineEdit *field, const QString &title)
{
    const QString chosen = QFileDialog::getExistingDirectory(
        this, title, resolveDirectory(field->text(), WindowsPlaces::ofProcess()));
    if (!chosen.isEmpty()) {
        field->setText(chosen);
    }
}

bool Form2::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->rdsdir && event->type() == QEvent::FocusOut
        && !isForAWhile(static_cast<QFocusEvent *>(event)->reason())) {
        Form2_rdsdir_LostFocus();
    }
    return QDialog::eventFilter(watched, event);
}

// Save.
void Form2::Form2_Command1_Click()
{
    // Enter saves without leaving the field.
    if (m_ui->rdsdir->hasFocus()) {
        Form2_rdsdir_LostFocus();
    }
    const QString fileName = m_ui->Text2->text();
    if (fileName.contains(u':') || fileName.contains(u'\\') || fileName.contains(u'/')) {
        showMessage(this, u"Only FileName no Path "_s + fileName);
        return;
    }
    // The last change reads the settings into the fields' owner again, so all texts are taken first.
    const QList<std::pair<QString, QString>> changes {{u"LOG_BOOK_CALLSIGN="_s, m_ui->Text1->text()},
        {u"HOME_DEC_LAT="_s, m_ui->latitude->text()}, {u"HOME_DEC_LON="_s, m_ui->longitude->text()},
        {u"LOGBOOK_FILENAME="_s, fileName}, {u"OMID="_s, m_ui->omid->text()},
        {u"EMAIL="_s, m_ui->email->text()}, {u"RDSDX_LOG="_s, m_ui->rdsdir->text()},
        {u"RDSSPY_LOGS="_s, m_ui->rdsspydir->text()},
        {u"AS_MILES="_s, m_ui->Option2->isChecked() ? u"TRUE"_s : u"FALSE"_s}};
    for (const auto &[key, value] : changes) {
        m_config.changeConfig(key, value);
    }
    Q_EMIT saved();
    close();
}

// Close: nothing is saved.
void Form2::Form2_Command2_Click()
{
    close();
}

// RDSDX: one "\" at the end is dropped.
void Form2::Form2_rdsdir_LostFocus()
{
    QString text = m_ui->rdsdir->text();
    if (text.endsWith(u'\\')) {
        text.chop(1);
        m_ui->rdsdir->setText(text);
    }
}

} // namespace quillon
