#include "core/ui/form1.h"
#include "import/ui/importfile.h"
#include "net/requestaborted.h"
#include "platform/files.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui/statustext.h"

#include <QScopeGuard>

namespace quillon {

using namespace Qt::StringLiterals;

// Receptions from a File.
void Form1::menuImportFile_Click()
{
    if (openWindow<importFile>(*this)) {
        return;
    }
    const QString memory =
        m_options.lookFolder.isEmpty() ? QString() : filePath(m_options.lookFolder, u"import.ini"_s);
    auto *window = new importFile(
        log(), {m_options.regional, QTimeZone::utc(), m_config.settings().inMiles()}, memory,
        [this](const LogChange &change, const QString &name) {
            if (m_importing) {
                showMessage(this, u"The import of RDS Spy has to end first"_s);
                throw RequestAborted();
            }
            // What the form holds of an entry that is completed is not that entry any more.
            tellUnstored();
            m_form->clear();
            closeEntry();
            rememberKnown();
            // After a save that fails, too: the receptions are in the log.
            const auto told = qScopeGuard([this] { tellNews(); });
            m_document.commit({name, change, {}});
        },
        this);
    connect(window, &importFile::summary, this, [this](const QString &text) { tell(text); });
    window->show();
}

} // namespace quillon
