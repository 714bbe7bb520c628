#include "core/ui/form1_stations.h"

#include "core/picode.h"
#include "core/ui/form1_longwork.h"
#include "core/ui/results.h"
#include "geo/leg.h"
#include "platform/files.h"
#include "stations/mapjson.h"
#include "stations/nameagreement.h"
#include "stations/stationcsv.h"
#include "stations/ui/stationcolumns.h"
#include "txdb/derivedcells.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/statustext.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QScopeGuard>

#include <cmath>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

const QString title = u"Station List"_s;

// The user has pressed "Stop", or closed the window.
class ReadingStopped
{
};

QString line(const Candidate &candidate, DistanceUnit unit, NumberFormat numbers)
{
    constexpr double ten = 0.095;
    const double percent = rounded(100 * candidate.share, candidate.share < ten ? 1 : 0);
    const ListedStation &station = candidate.station;
    QStringList fields {plainText(percent), station.site, station.country};
    fields += candidate.leg ? distanceFigure(candidate.leg->kilometres, unit) : QString();
    fields += candidate.why;
    fields += candidate.leg ? plainText(std::fmod(rounded(candidate.leg->azimuth, 0), 360.0)) : QString();
    fields += station.kilowatts > 0 ? localText(station.kilowatts, numbers) : QString();
    fields += station.names.isEmpty() ? station.programme : QString(station.names).replace(u'_', u' ');
    return fields.join(u'\t');
}

bool beginsAsJson(QByteArrayView beginning)
{
    constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";
    if (beginning.startsWith(byteOrderMark)) {
        beginning = beginning.sliced(byteOrderMark.size());
    }
    const QByteArrayView text = beginning.trimmed();
    return text.startsWith('{') || text.startsWith('[');
}

// Reads the file, whose layout is that of a CSV unless there is none.
StationCollector collected(QFile &file, const std::optional<CsvLayout> &layout, const ReadProgress &progress)
{
    StationCollector stations;
    BlockSource source(file, file.fileName(), progress);
    if (layout) {
        readStationCsv(source, *layout, stations);
    } else {
        readMapJson(source, stations);
    }
    return stations;
}

QString refusedCountText(qint64 count)
{
    return count == 1 ? u"1 line was refused."_s : u"%1 lines were refused."_s.arg(count);
}

} // namespace

Form1::Probably::Probably(Form1 &window)
    : m_window(window)
{
    constexpr int pauseInTyping = 150;
    m_later.setSingleShot(true);
    m_later.setInterval(pauseInTyping);
    QObject::connect(
        &m_later, &QTimer::timeout, &m_later, [this] { guarded(&m_window, [this] { refresh(); }); });
    QObject::connect(m_window.m_form, &EntryForm::textChanged, &m_later, [this] { ask(); });
    QObject::connect(m_window.m_results, &Results::candidatesWanted, &m_later,
        [this] { guarded(&m_window, [this] { refresh(); }); });
}

void Form1::Probably::ask()
{
    if (m_window.m_results->candidatesShown() && !m_window.m_longWork) {
        m_later.start();
    }
}

void Form1::Probably::logChanged()
{
    m_heard.reset();
    ask();
}

void Form1::Probably::listChanged()
{
    m_list.reset();
    ask();
}

// A list that cannot be read is told once; the log is there all the same.
void Form1::Probably::readList()
{
    if (m_list) {
        return;
    }
    m_list.emplace();
    const QString path = m_window.m_config.path(stationListName.toString());
    removeLeftover(path, *m_window.m_options.fileCalls);
    if (!QFileInfo::exists(path)) {
        return;
    }
    StationList read(readFile(path), path);
    *m_list = std::move(read);
    if (m_list->leftOut() > 0) {
        m_window.tell(u"%1: %2 lines hold no station and were left out, the first is line %3"_s.arg(path)
                          .arg(m_list->leftOut())
                          .arg(m_list->firstLeftOut()));
    }
}

std::optional<HeardSignal> Form1::Probably::signalOfForm() const
{
    const EntryForm &form = *m_window.m_form;
    auto signal = heardSignal(form.frequency(), form.piCode(), form.rdsName());
    if (signal) {
        const QString mode = form.mode();
        signal->esLikely = mode == "Es"_L1
            || (mode.isEmpty()
                && isEsHour(m_window.log(), form.dateTime().value_or(UtcNow()), m_window.m_selected));
        signal->home = homePosition(m_window.m_config.settings());
    }
    return signal;
}

void Form1::Probably::refresh()
{
    m_later.stop();
    readList();
    if (!m_heard) {
        m_heard.emplace(m_window.log(), m_window.transmitters());
    }
    m_signal = signalOfForm();
    m_found = m_signal ? candidates(*m_signal, *m_list, *m_heard) : std::vector<Candidate>();
    const DistanceUnit unit =
        m_window.m_config.settings().inMiles() ? DistanceUnit::Miles : DistanceUnit::Kilometres;
    QStringList lines;
    for (const Candidate &candidate : m_found) {
        lines += line(candidate, unit, m_window.m_options.regional.numbers);
    }
    m_window.m_results->setCandidates(lines, textWhenEmpty(m_signal));
}

QString Form1::Probably::textWhenEmpty(const std::optional<HeardSignal> &signal) const
{
    if (!signal) {
        return u"A frequency with a PI code or an RDS name in the form\n"
               "brings the stations here that it probably was."_s;
    }
    return m_list->count() > 0 ? u"No station of the list or the log fits."_s
                               : u"No station of the log fits.\nImport › Station List takes a list."_s;
}

// The code stays as it was heard, whichever region the list has.
SearchResult Form1::Probably::result(int candidate) const
{
    const auto index = checkedIndex(candidate, static_cast<qint32>(m_found.size()), u"candidate");
    const Candidate &found = m_found[index];
    const ListedStation &station = found.station;
    const QString name = bestName(m_signal->name, station.names);
    const std::optional<quint16> pi = m_signal->pi ? m_signal->pi : station.pi;
    constexpr int places = 4;
    const auto degrees = [&](double value) {
        return found.hasPlace ? plainText(rounded(value, places)) : QString();
    };
    return {.frequency = plainText(station.kilohertz / 1000.0),
        .pi = pi ? piText(*pi) : QString(),
        .ps = name.isEmpty() ? m_signal->name : name,
        .country = station.country,
        .transmitter = station.site,
        .power = station.kilowatts > 0 ? plainText(station.kilowatts) : QString(),
        .latitude = degrees(station.place.latitude),
        .longitude = degrees(station.place.longitude),
        .uid = station.id};
}

// A candidate: copies it into the form and stores it.
void Form1::candidates_DblClick(int candidate)
{
    takeOverResult(m_probably->result(candidate));
}

// Station List: a file of stations becomes the program's own list.
void Form1::menuImportStations_Click()
{
    const QString path = QFileDialog::getOpenFileName(
        this, title, {}, u"Lists of stations (*.json *.csv *.txt);;All files (*)"_s);
    if (!path.isEmpty()) {
        importStationList(path);
    }
}

void Form1::importStationList(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw RuntimeError(file.exists() ? ErrorName::PermissionDenied : ErrorName::FileNotFound,
            u"Opening %1: %2"_s.arg(path, file.errorString()));
    }
    constexpr qint64 looked = 65'536;
    const QByteArray beginning = file.peek(looked);
    std::optional<CsvLayout> layout;
    if (!beginsAsJson(beginning)) {
        StationColumns question(beginning, QFileInfo(path).fileName(), m_options.regional.codePage, this);
        if (question.exec() != QDialog::Accepted) {
            return;
        }
        layout = question.layoutOfFile();
    }
    StationCollector stations;
    try {
        LongWork work(*this, u"Reading %v of %m MB"_s);
        const QString tip = m_autoStop->toolTip();
        const auto tipBack = qScopeGuard([&] { m_autoStop->setToolTip(tip); });
        m_autoStop->setToolTip(u"End the reading; the list that was there stays"_s);
        constexpr qint64 megabyte = 1'000'000;
        stations = collected(file, layout, [&](qint64 read) {
            work.setProgress(static_cast<int>(read / megabyte), static_cast<int>(file.size() / megabyte) + 1);
            QApplication::processEvents();
            if (work.isStopped() || !isVisible()) {
                throw ReadingStopped();
            }
        });
    } catch (const ReadingStopped &) {
        m_status->setText(u"The list of stations was not read to its end; the one before stays"_s);
        return;
    }
    const QByteArray bytes = stations.file();
    const StationList list(bytes, path);
    const QString refused =
        stations.refusedCount() > 0 ? u"\n\n"_s + refusedCountText(stations.refusedCount()) : QString();
    const QString details =
        refusedText(stations.refused(), stations.refusedCount(), StationCollector::mostRefused);
    if (list.count() == 0) {
        showMessageWith(this, path + u" holds no station that can be kept."_s + refused, details, title);
        return;
    }
    backUpToday();
    writeFile(m_config.path(stationListName.toString()), bytes, *m_options.fileCalls);
    m_probably->listChanged();
    tell(u"The list holds "_s + countsText(list.counts()));
    showMessageWith(this, u"The list holds "_s + countsText(list.counts()) + u'.' + refused, details, title);
}

} // namespace quillon
