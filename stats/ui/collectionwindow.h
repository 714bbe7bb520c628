#pragma once

#include "core/config.h"
#include "platform/filecalls.h"
#include "stats/collectiontables.h"

#include <QDialog>
#include <QTimer>

#include <functional>
#include <memory>

namespace quillon {

namespace Ui {
class CollectionWindow;
}

class CalendarChart;
class ChartControl;
class CollectionPage;
class RoseChart;

/// What the log adds up to: countries, stations, records, calendar, directions and openings.
class CollectionWindow : public QDialog
{
    Q_OBJECT

public:
    /// What the window reads; all of it must outlive the window.
    struct Reads
    {
        const Logbook &log;
        const TransmitterList &sites;
        const Config &config;
        const Novelty &novelty;
        std::function<std::vector<qint32>()> shown; ///< the entries that the filter of the log shows
    };

    explicit CollectionWindow(Reads reads, QWidget *parent = nullptr, FileCalls &calls = FileCalls::real());
    ~CollectionWindow() override;

    /// True while the collection rules by the filter of the log.
    [[nodiscard]] bool isShownOnly() const;

public Q_SLOTS:
    /// Log, sites, settings have changed: what is seen is counted again as soon as there is time.
    void logChanged();
    /// The filter of the log shows others.
    void shownChanged();

Q_SIGNALS:
    /// The receptions of a cell, a day, a direction shall be seen in the log.
    void receptionsWanted(const quillon::CellReceptions &receptions);

protected:
    void showEvent(QShowEvent *event) override;

private:
    struct Tab
    {
        CollectionPage *page = nullptr;
        QString name; ///< of its files
        QWidget *chart = nullptr; ///< a ChartControl or a PaintedChart
        void (CollectionWindow::*count)() = nullptr;
        bool isCounted = false;
    };

    void addTabs();
    void wire();
    void countCurrent();
    void showView(CollectionPage *page, CollectionView view);
    void countCountries();
    void countStations();
    void countRecords();
    void countCalendar();
    void countDirections();
    void countOpenings();
    [[nodiscard]] Tab &current();
    [[nodiscard]] QImage currentPicture();
    void saveCsv();
    void savePicture();
    void copyText();
    void save(const QString &proposed, const std::function<QByteArray()> &bytes);

    Reads m_reads;
    FileCalls &m_calls;
    std::unique_ptr<Ui::CollectionWindow> m_ui;
    std::unique_ptr<CollectionSource> m_source; ///< as it was counted last; null when it has to be again
    std::vector<Tab> m_tabs;
    ChartControl *m_countriesChart = nullptr;
    ChartControl *m_stationsChart = nullptr;
    ChartControl *m_recordsChart = nullptr;
    ChartControl *m_openingsChart = nullptr;
    CalendarChart *m_calendar = nullptr;
    RoseChart *m_rose = nullptr;
    std::shared_ptr<const std::vector<Opening>> m_openings;
    qint32 m_mostNumbers = 0; ///< the tables hold no number of an entry beyond
    QTimer m_later;
};

} // namespace quillon
