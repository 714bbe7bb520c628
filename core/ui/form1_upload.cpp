#include "core/ui/form1_longwork.h"
#include "fmlist/upload.h"
#include "net/inet1.h"
#include "platform/runtimeerror.h"
#include "ui/busypointer.h"
#include "ui/messages.h"
#include "ui/statustext.h"

#include <exception>

namespace quillon {

using namespace Qt::StringLiterals;

// Upload Logs.
void Form1::menuFMListUploadLogs_Click()
{
    m_inet->requireIdle(u"Uploading to FMList"_s);
    uploadToFmlist();
    showMessage(this, u"done."_s);
}

void Form1::uploadToFmlist()
{
    if (const auto refusal = uploadRefusal(m_config.settings(), log())) {
        showMessage(this, *refusal);
        return;
    }
    const BusyPointer busy;
    LongWork work(*this, u"Uploading %v of %m"_s);
    const QByteArray url = uploadUrl(m_config.settings().fmlistUrl, m_options.regional.codePage);
    const Upload upload = uploadLogs(
        log(), m_config.settings(), m_options.regional.codePage,
        [&](const QByteArray &body) {
            return m_inet->post(url, body, uploadHeaders.toByteArray(), uploadAnswerLength);
        },
        [this](qint32 entry) {
            LogChange change;
            change.setField(
                entry, log().entry(entry), LogField::FMList, sentField(log().entry(entry).fmlist));
            m_document.settle(change);
        },
        [&](const QString &answer, int done, int count) {
            m_status->setText(answer);
            work.setProgress(done, count);
            return !work.isStopped();
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

} // namespace quillon
