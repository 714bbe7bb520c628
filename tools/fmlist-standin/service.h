#pragma once

#include "fmlist-standin/request.h"
#include "fmlist-standin/stations.h"

#include <QByteArray>

#include <vector>

namespace quillon::standin {

/// An answer before it goes on the wire.
struct Answer
{
    QByteArray status = "200 OK";
    QByteArray contentType = "text/plain; charset=windows-1252";
    QByteArray body;
};

/// What the service answers: /rdslookup.php searches the stations, /logpost1.php takes a log, /fm_logmap.php
/// shows a small page. Wrong input is answered with "Error " and what is wrong.
[[nodiscard]] Answer serviceAnswer(const Request &request, const std::vector<Station> &stations);

/// The bytes of an answer on the wire; the connection ends after it.
[[nodiscard]] QByteArray wireBytes(const Answer &answer);

} // namespace quillon::standin
