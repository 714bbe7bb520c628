#pragma once

#include "net/curlhandles.h"

#include <QByteArray>
#include <QString>

namespace quillon {

/// A request to an http or https server.
struct HttpRequest
{
    QByteArray method = "GET"; ///< or "POST"
    QByteArray url; ///< goes out byte for byte
    QByteArray body;
    QByteArray headerBlock; ///< lines with CR LF between them; go out as they are

    /// "Opening " and the address.
    [[nodiscard]] QString doing() const;
};

/// The largest body that is taken of an answer, 16 MiB.
inline constexpr qsizetype largestAnswer = qsizetype(16) * 1024 * 1024;

/// Throws "Invalid procedure call" for a method other than GET and POST, and for an address that is none,
/// holds a byte that no address can hold or a user name, or is neither http nor https.
void requireValid(const HttpRequest &request);

/// The lines of the header block, and what keeps libcurl from adding lines of its own.
[[nodiscard]] CurlLines headerLines(const QByteArray &headerBlock);

/// Throws "Cannot reach the service" when libcurl did not take an option.
void requireOption(CURLcode result);

/// Sets an option of a transfer. Throws "Cannot reach the service" when the installed libcurl does not know
/// it.
template<typename Value>
void setOption(CURL *transfer, CURLoption option, Value value)
{
    requireOption(curl_easy_setopt(transfer, option, value));
}

/// Makes the transfer one of this request, which with its header lines must live as long as the transfer.
/// Redirects are followed, at most ten; a POST stays one, but for "303 See Other".
void setRequest(CURL *transfer, const HttpRequest &request, const CurlLines &lines);

} // namespace quillon
