#include "core/ui/form1.h"

#include "fmlist/upload.h"
#include "fmlist/weblinks.h"
#include "platform/runtimeerror.h"
#include "ui/busypointer.h"
#include "ui/desktop.h"
#include "ui/inet1.h"
#include "ui/messages.h"
#include "ui/widgetstate.h"
#include "ui_form1.h"

#include <QLabel>

#include <exception>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString askedFor(const SearchRequest &request)
{
    QStringList parts {request.frequency + u" MHz"_s};
    if (!request.pi.isEmpty()) {
        parts += u"PI code "_s + request.pi;
    }
    if (!request.ps.isEmpty()) {
        parts += u"RDS name "_s + request.ps;
    }
    return parts.join(u", "_s);
}

} // namespace

// Search FMList.
void Form1::Command11_Click()
{
    searchForStation({m_ui->Text9->text(), m_ui->Text1->text(), m_ui->Text8->text()});
}

void Form1::searchForStation(const SearchRequest &request)
{
    m_inet->requireIdle(u"Searching FMList"_s);
    showList2();
    const BusyPointer busy;
    const Disabled disabled(*m_ui->Command11);
    searchFmlist(request);
}

void Form1::searchFmlist(const SearchRequest &request)
{
    m_status->clear();
    m_ui->List2->clear();
    m_matchCount = 0;
    const auto url = searchUrl(m_config.settings().fmlistUrl, request, m_options.regional.codePage);
    if (!url) {
        return;
    }
    const SearchAnswer answer = readSearchAnswer(m_inet->openUrl(*url), m_options.regional.numbers);
    m_matchCount = answer.matches;
    m_status->setText(answer.status);
    const RedrawOff redrawOff(*m_ui->List2);
    m_ui->List2->setLines(answer.rows);
    m_ui->List2->setEmptyText(
        (answer.status.isEmpty() ? u"FMList named no station"_s : answer.status) + u'\n' + askedFor(request));
    m_ui->List2->setListIndex(static_cast<int>(highlightedRow(answer.rows, request.pi)));
    if (answer.failure) {
        throw RuntimeError(*answer.failure);
    }
}

// A result of Search FMList: copies it into the form and stores it.
void Form1::List2_DblClick(int line)
{
    if (!m_automatic && !askYesNo(this, u"Update record with search results?"_s, u"Update Record"_s)) {
        return;
    }
    const SearchResult result = chosenResult(m_ui->List2->text(line));
    m_ui->Text9->setText(result.frequency);
    m_ui->Text1->setText(result.pi);
    m_ui->Text8->setText(result.ps);
    m_ui->Combo3->setEditText(result.country);
    m_ui->Text5->setText(result.transmitter);
    m_ui->Text6->setText(result.power);
    m_ui->Text7->setText(result.latitude);
    m_ui->Text10->setText(result.longitude);
    m_ui->uid->setText(result.uid);
    if (m_automatic) {
        return;
    }
    if (m_ui->Command1->isEnabled()) {
        Command1_Click();
    } else if (m_selected >= 0) {
        Command3_Click();
    }
}

// Upload Logs.
void Form1::menuFMListUploadLogs_Click()
{
    m_inet->requireIdle(u"Uploading to FMList"_s);
    uploadToFmlist();
    showMessage(this, u"done."_s);
}

void Form1::uploadToFmlist()
{
    if (const auto refusal = uploadRefusal(m_config.settings(), m_log)) {
        showMessage(this, *refusal);
        return;
    }
    const BusyPointer busy;
    const ShownProgress progress(*m_progress, u"Uploading %v of %m"_s);
    const QByteArray url = uploadUrl(m_config.settings().fmlistUrl, m_options.regional.codePage);
    const Upload upload = uploadLogs(
        m_log, m_config.settings(), m_options.regional.codePage,
        [&](const QByteArray &body) {
            return m_inet->post(url, body, uploadHeaders.toByteArray(), uploadAnswerLength);
        },
        [this](const QString &answer, int done, int count) {
            m_status->setText(answer);
            m_progress->setRange(0, count);
            m_progress->setValue(done);
        });
    // What was accepted is on the disk before a failure is told, so that nothing is sent twice.
    std::exception_ptr failure = upload.failure;
    try {
        saveLogbook();
    } catch (const RuntimeError &) {
        failure = std::current_exception();
    }
    populateGrid();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

// Google: a web search for the station in the form.
void Form1::Command5_Click()
{
    HyperJump(webSearchUrl(m_config.settings().searchUrl, m_ui->Text1->text(), m_ui->Text9->text(),
        m_ui->Text8->text(), m_ui->Text5->text()));
}

// Today's Propagation Map.
void Form1::menuFMLPropMap_Click()
{
    HyperJump(propagationMapUrl(m_config.settings().fmlistUrl, localNow()));
}

// Today's Propagation Map for You.
void Form1::menuFMLYouProp_Click()
{
    const auto url =
        ownPropagationMapUrl(m_config.settings().fmlistUrl, localNow(), m_config.settings().omid);
    if (!url) {
        showMessage(this, noOmidText.toString());
        return;
    }
    HyperJump(*url);
}

// Online Help: the supplied manual, unless the settings name another page.
void Form1::menuHelpOnlineHelp_Click()
{
    const QString name = u"manual.html"_s;
    const QString &url = m_config.settings().helpUrl;
    HyperJump(!url.isEmpty() ? url : findFile(m_options.suppliedDir, name).value_or(m_config.path(name)));
}

} // namespace quillon
