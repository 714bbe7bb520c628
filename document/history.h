#pragma once

#include "core/logbook.h"
#include "document/change.h"

#include <vector>

namespace quillon {

/// One thing that the user did, in one change or in many.
struct Step
{
    QString name;
    std::vector<Change> changes;

    /// A field was set to `value` for good: no undo and no redo of that field brings another value back.
    void settle(qint32 entry, LogField field, const FieldValue &value);
    /// Entries that it added are, when it is made again, what they are in the log now. To be called before it
    /// is undone.
    void remember(const Logbook &log);
};

/// What was done and what was undone, as far back as the program has run.
class History
{
public:
    /// A new step: what was undone before cannot be redone any more. Steps that change nothing are none.
    void push(Step step);

    /// What is undone next, and what is redone next; null when there is nothing.
    [[nodiscard]] const Step *undoable() const { return m_done.empty() ? nullptr : &m_done.back(); }
    [[nodiscard]] const Step *redoable() const { return m_undone.empty() ? nullptr : &m_undone.back(); }
    /// The last step done is an undone one from now on, and the other way round.
    void moveToUndone(const Logbook &log);
    void moveToDone();

    /// Step::settle of all steps.
    void settle(qint32 entry, LogField field, const FieldValue &value);

private:
    std::vector<Step> m_done;
    std::vector<Step> m_undone;
};

} // namespace quillon
