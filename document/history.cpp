#include "document/history.h"

#include "platform/backwards.h"

#include <utility>

namespace quillon {

void Step::settle(qint32 entry, LogField field, const FieldValue &value)
{
    for (Change &change : changes) {
        for (FieldChange &made : change.log.fields) {
            if (made.entry == entry && made.field == field) {
                made.before = value;
                made.after = value;
            }
        }
    }
}

void Step::remember(const Logbook &log)
{
    qint32 number = log.count();
    for (Change &change : backwards(changes)) {
        for (LogEntry &entry : backwards(change.log.added)) {
            --number;
            entry = log.entry(number);
        }
    }
}

void History::push(Step step)
{
    std::erase_if(step.changes, [](const Change &change) { return change.isEmpty(); });
    if (!step.changes.empty()) {
        m_undone.clear();
        m_done.push_back(std::move(step));
    }
}

void History::moveToUndone(const Logbook &log)
{
    m_done.back().remember(log);
    m_undone.push_back(std::move(m_done.back()));
    m_done.pop_back();
}

void History::moveToDone()
{
    m_done.push_back(std::move(m_undone.back()));
    m_undone.pop_back();
}

void History::settle(qint32 entry, LogField field, const FieldValue &value)
{
    for (std::vector<Step> *steps : {&m_done, &m_undone}) {
        for (Step &step : *steps) {
            step.settle(entry, field, value);
        }
    }
}

} // namespace quillon
