#include "live/ui/autologdialog.h"

#include "ui/messages.h"

#include "ui_autologdialog.h"

#include <QPushButton>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString linesOf(const QList<Local> &locals)
{
    QStringList lines;
    for (const Local &local : locals) {
        lines += textOf(local);
    }
    return lines.join(u'\n');
}

} // namespace

AutoLogDialog::AutoLogDialog(const AutoLogRules &rules, bool isLearning, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::autoLog>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    m_ui->autoLogOn->setChecked(rules.on);
    m_ui->autoLogEarliest->setValue(rules.earliest);
    m_ui->autoLogHold->setValue(rules.hold);
    m_ui->autoLogAgain->setValue(rules.again);
    m_ui->autoLogLocals->setPlainText(linesOf(rules.locals));
    m_ui->autoLogLearn->setEnabled(!isLearning);
    connect(m_ui->autoLogButtons, &QDialogButtonBox::accepted, this, [this] { OKButton_Click(); });
    connect(m_ui->autoLogButtons, &QDialogButtonBox::rejected, this, &QDialog::close);
    connect(m_ui->autoLogLearn, &QPushButton::clicked, this, [this] { autoLogLearn_Click(); });
}

AutoLogDialog::~AutoLogDialog() = default;

void AutoLogDialog::addLocals(const QList<Local> &locals)
{
    if (!locals.isEmpty()) {
        m_ui->autoLogLocals->appendPlainText(linesOf(locals));
    }
    m_ui->autoLogLearn->setEnabled(true);
}

// OK: takes the rules over, unless a line is no local.
void AutoLogDialog::OKButton_Click()
{
    AutoLogRules rules {m_ui->autoLogOn->isChecked(), m_ui->autoLogEarliest->value(),
        m_ui->autoLogHold->value(), m_ui->autoLogAgain->value(), {}};
    const QStringList lines = m_ui->autoLogLocals->toPlainText().split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].trimmed().isEmpty()) {
            continue;
        }
        const auto local = readLocal(lines[i]);
        if (!local) {
            showMessage(this,
                u"Line %1 of the locals is neither a frequency nor a PI code: %2"_s.arg(i + 1).arg(lines[i]));
            return;
        }
        if (!rules.locals.contains(*local)) {
            rules.locals.append(*local);
        }
    }
    Q_EMIT rulesChosen(rules);
    close();
}

// Learn the locals now: what is heard in the next ten minutes.
void AutoLogDialog::autoLogLearn_Click()
{
    m_ui->autoLogLearn->setEnabled(false);
    Q_EMIT learnLocals();
}

} // namespace quillon
