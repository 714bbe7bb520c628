#pragma once

#include "core/ui/form1.h"
#include "stations/candidates.h"

#include <QTimer>

#include <optional>
#include <vector>

namespace quillon {

/// The tab "Probably": the candidates for the reception in the form, sought shortly after it has changed and
/// only while the tab is shown. The list of stations is read when it is first needed.
class Form1::Probably
{
public:
    explicit Probably(Form1 &window);

    /// The log or the transmitter list has changed; the file of the list of stations has.
    void logChanged();
    void listChanged();
    /// Home or the unit of distances may be another one.
    void settingsChanged() { ask(); }

    /// What the form takes over of a candidate. Throws "Subscript out of range".
    [[nodiscard]] SearchResult result(int candidate) const;

private:
    void ask();
    void refresh();
    void readList();
    [[nodiscard]] std::optional<HeardSignal> signalOfForm() const;
    [[nodiscard]] QString textWhenEmpty(const std::optional<HeardSignal> &signal) const;

    Form1 &m_window;
    QTimer m_later;
    std::optional<StationList> m_list;
    std::optional<HeardStations> m_heard;
    std::optional<HeardSignal> m_signal;
    std::vector<Candidate> m_found;
};

} // namespace quillon
