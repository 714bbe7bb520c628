#include "core/ui/form1.h"
#include "import/ui/importfile.h"
#include "net/requestaborted.h"
#include "platform/files.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui/statustext.h"

#include <QScopeGuard>

#include <memory>
#include <utility>
#include <vector>

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
    const auto brought = std::make_shared<std::vector<qint32>>();
    auto *window = new importFile(
        log(), {m_options.regional, QTimeZone::utc(), m_config.settings().inMiles()}, memory,
        [this, brought](const LogChange &change, const QString &name) {
            if (m_importing) {
                showMessage(this, u"The import of RDS Spy has to end first"_s);
                throw RequestAborted();
            }
            // What the form holds of an entry that is completed is not that entry any more.
            tellUnstored();
            m_form->clear();
            closeEntry();
            rememberKnown();
            m_lastChanged.clear();
            // After a save that fails, too: the receptions are in the log.
            const auto told = qScopeGuard([&] {
                *brought = m_lastChanged;
                tellNews();
            });
            m_document.commit(measured({name, change, {}}, Measured::Missing));
        },
        this, *m_options.fileCalls);
    connect(window, &importFile::summary, this,
        [this, brought](const QString &text) { tellHidden(text, std::exchange(*brought, {})); });
    window->show();
}

} // namespace quillon
