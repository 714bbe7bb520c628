#pragma once

#include "core/config.h"
#include "core/logbook.h"
#include "core/logentry.h"
#include "platform/regional.h"
#include "txdb/transmitters.h"

#include <QStringList>
#include <QWidget>

#include <memory>

class QAbstractButton;

namespace quillon {

namespace Ui {
class EntryForm;
}

struct SearchResult;

/// The entry form: a field for each field of a reception that is typed, and the buttons of all that is done
/// with it. It knows what stands in it and in which state it is; what a button does, the window decides.
class EntryForm : public QWidget
{
    Q_OBJECT

public:
    enum class State {
        AtRest, ///< nothing is typed; some fields serve the searches
        New, ///< a new reception
        Editing, ///< one of the log
    };

    /// What stands in the form, to be put back later.
    struct Draft
    {
        State state = State::AtRest;
        QStringList texts;
        QString notes;
        bool notesTouched = false;
        bool frequencyTouched = false;
        bool cancelOffered = false;
    };

    explicit EntryForm(QWidget *parent = nullptr);
    ~EntryForm() override;

    /// To be called once. The list must outlive the form: its sites are offered under "Existing".
    void prepare(const Regional &regional, const TransmitterList &sites);
    /// Home and the unit in which `legLabel` tells the way to the site; to be called whenever they change.
    void measureFrom(const Settings &settings);
    /// Fills the list of propagation modes.
    void listModes();
    void setCountries(const QStringList &countries);
    [[nodiscard]] QStringList countries() const;
    /// RDS Name and Name/Locale offer what the log has with the PI code and in the country. The log must
    /// outlive the form.
    void completeFrom(const Logbook &log);
    /// Puts a pane at the right of the frames, before the buttons in the order of Tab.
    void addPane(QWidget &pane, const QList<QWidget *> &stops);

    [[nodiscard]] State state() const { return m_state; }
    /// The fields, and those buttons that an entry needs, as the state has them. AtRest leaves the texts.
    void setState(State state);
    /// Says how many receptions are chosen, nothing for one or none. Several can be deleted in any state.
    void setChosenCount(int count);
    /// Yellow: a reception of the log is loaded.
    void setYellow(bool yellow);
    /// The button "New" says "Cancel".
    [[nodiscard]] bool isCancelOffered() const { return m_cancelOffered; }
    void offerCancel(bool offered);

    [[nodiscard]] QString frequency() const;
    [[nodiscard]] QString piCode() const;
    [[nodiscard]] QString rdsName() const;
    [[nodiscard]] QString country() const;
    [[nodiscard]] QString site() const;
    [[nodiscard]] QString mode() const;
    [[nodiscard]] QString dateTimeText() const;
    /// The moment in Date / Time; nothing when it is none.
    [[nodiscard]] std::optional<DateTime> dateTime() const;

    /// The reception in the form, without Dist and FMList. Throws "Type mismatch" for a wrong date.
    [[nodiscard]] LogEntry entry() const;
    /// The same over an entry of the log, whose Dist and FMList stay, and its notes unless they were touched.
    [[nodiscard]] LogEntry entryOver(const LogEntry &stored) const;
    /// The site in the form: trimmed name and country, and position.
    [[nodiscard]] Transmitter transmitter() const;

    /// Shows an entry, its country's sites, and the position of its site when the list has it.
    void show(const LogEntry &entry);
    using QWidget::show;
    /// Empties the fields but Freq, Country and Prop, so that a run of stations needs little typing.
    void clearForNew(DateTime now);
    /// Empties all fields.
    void clear();
    void clearPosition();
    void setDateTime(const QString &text);
    void setFrequency(const QString &text);
    void setPiCode(const QString &text);
    void setRdsName(const QString &text);
    void setCountry(const QString &text);
    void setPosition(const QString &latitude, const QString &longitude);
    void clearUid();
    /// Site, power, position, UID and notes of an imported reception are unknown.
    void clearSiteAndNotes();
    void takeOver(const SearchResult &result);

    /// True when the user has typed something that is not stored.
    [[nodiscard]] bool hasChanges() const;
    /// What stands here now is stored, or is not to be.
    void settle();
    [[nodiscard]] Draft draft() const;
    void restore(const Draft &draft);

    /// Says what is new in the reception that was added last, until the next one is in the form.
    void showBadge(const QString &text);

    /// Puts the cursor into Freq Mhz, chosen whole.
    void focusFrequency();
    /// A button pressed by a key leaves the focus in the field, whose check is due all the same. False when
    /// the date in it is wrong.
    bool checkFocusedField();
    /// True when the press of this button left a wrong date, which is told now instead of what it does.
    [[nodiscard]] bool takeRefusal();
    [[nodiscard]] QAbstractButton *button(const QString &name) const;

Q_SIGNALS:
    /// The user has changed a field.
    void edited();
    /// The text of a field is another, whoever changed it.
    void textChanged();
    /// Enter was pressed in a field; Esc was pressed in the form.
    void enterPressed();
    void escapePressed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void Text1_LostFocus();
    void Text2_LostFocus();
    void Text6_LostFocus();
    void Text8_LostFocus();
    void Combo3_LostFocus();
    void Combo1_Click();
    void tellInvalidDate();
    void fieldLostFocus(const QObject *field);
    void wire();
    void watchEdits();
    void listSites(const QString &country);
    void showLeg();
    void showSite(const QString &name, const QString &country);
    void showNotes(const QString &notes);
    void tellStored();
    void offerDelete();
    [[nodiscard]] QString notes() const;
    [[nodiscard]] QList<QWidget *> editableFields() const;
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] bool isDateWrong() const;

    std::unique_ptr<Ui::EntryForm> m_ui;
    Regional m_regional;
    const TransmitterList *m_sites = nullptr;
    Settings m_settings;
    State m_state = State::AtRest;
    int m_chosenCount = 0;
    bool m_cancelOffered = false;
    bool m_edited = false;
    QStringList m_settled; ///< the texts when nothing was typed yet
    QString m_shownNotes; ///< what the notes were filled with, each blank and line end as it was
    bool m_dateRefused = false; ///< from a wrong date until it is told
    bool m_pressRefused = false; ///< the last press of a button left a wrong date
};

} // namespace quillon
