#include "core/ui/form1.h"
#include "stats/novelty.h"
#include "stats/ui/collectionwindow.h"
#include "ui/openwindow.h"
#include "ui/statustext.h"
#include "ui_form1.h"

namespace quillon {

using namespace Qt::StringLiterals;

// What is new in each reception. Counted when it is first asked for, so that the window is there first.
Novelty &Form1::novelty()
{
    if (!m_novelty) {
        m_novelty = std::make_unique<Novelty>();
        m_novelty->count(log());
    }
    return *m_novelty;
}

// What is new is known before the views ask for it: this hears of a change before they do.
void Form1::wireNovelty()
{
    connect(&m_document, &LogDocument::changed, this, [this](const DocumentChange &what) {
        if (m_novelty) {
            m_novelty->update(log(), what.entries);
        }
        m_news->hide();
        if (what.kind == DocumentChange::Kind::Restored) {
            m_form->showBadge({});
        }
        // Others than those that changed may be new no more.
        if (!m_ui->Grid1->isColumnHidden(static_cast<int>(GridColumn::New))) {
            m_ui->Grid1->viewport()->update();
        }
    });
    m_rows.setTips([this](const LogEntry &entry, qint32 number, GridColumn column) {
        return column == GridColumn::New ? wordsOf(novelty().marks(number), entry).join("; "_L1) : QString();
    });
}

// What is new in the reception that was just added.
void Form1::showNewBadge(qint32 entry)
{
    if (!m_importing) {
        m_form->showBadge(badgeText(novelty().marks(entry), log().entry(entry)));
    }
}

void Form1::rememberKnown()
{
    novelty().remember();
}

// Beside what the status line says: what the log had not when that was remembered. Until the next change.
void Form1::tellNews()
{
    const QString news = newThingsText(novelty().newSinceRemembered());
    m_news->setText(news);
    m_news->setVisible(!news.isEmpty());
}

// Collection.
void Form1::menuStatsCollection_Click()
{
    if (openWindow<CollectionWindow>(*this)) {
        return;
    }
    const auto shown = [this] {
        const std::span<const qint32> rows = m_rows.shown();
        return std::vector<qint32>(rows.begin(), rows.end());
    };
    auto *window =
        new CollectionWindow({log(), transmitters(), m_config, novelty(), shown}, this, *m_options.fileCalls);
    connect(&m_document, &LogDocument::changed, window, &CollectionWindow::logChanged);
    connect(
        window, &CollectionWindow::receptionsWanted, this, [this, window](const CellReceptions &receptions) {
            showReceptions(receptions, window->isShownOnly());
        });
    window->show();
}

// The log shows what a cell of the collection was counted from: within what it shows already, when that was
// counted.
void Form1::showReceptions(const CellReceptions &receptions, bool withinShown)
{
    if (!receptions.entries.empty() || receptions.filter.isEmpty()) {
        showEntries(
            {receptions.entries.begin(), receptions.entries.end()}, u"Receptions "_s + receptions.words);
        return;
    }
    FilterBar &bar = *m_ui->filterBar;
    const QString before = withinShown ? bar.text() : QString();
    if (!withinShown) {
        clearFilter();
    }
    bar.setText(before.isEmpty() ? receptions.filter : before + u' ' + receptions.filter);
}

} // namespace quillon
