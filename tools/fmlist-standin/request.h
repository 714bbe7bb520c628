#pragma once

#include <QByteArray>
#include <QList>

#include <optional>
#include <utility>

namespace quillon::standin {

/// A request as it came in, byte for byte.
struct Request
{
    QByteArray line; ///< "GET /rdslookup.php?freq=87.6 HTTP/1.1"
    QByteArray headers; ///< the lines after it, each with its CR LF
    QByteArray body;

    [[nodiscard]] QByteArray method() const;
    /// Path and query.
    [[nodiscard]] QByteArray target() const;
    [[nodiscard]] QByteArray path() const;
    /// What follows the first "?".
    [[nodiscard]] QByteArray query() const;
    /// The value of the header of that name, in any case; empty when there is none.
    [[nodiscard]] QByteArray header(const QByteArray &name) const;
};

/// Takes a whole request from the beginning of `bytes`; nothing while some of it has not come in yet.
[[nodiscard]] std::optional<Request> takeRequest(QByteArray &bytes);

/// The names and decoded values of a query or form body: "+" is a blank, "%E9" a byte; a "%" with fewer than
/// two hexadecimal digits takes the one it has.
using Fields = QList<std::pair<QByteArray, QByteArray>>;
[[nodiscard]] Fields formFields(const QByteArray &form);

/// The value of the first field of that name; empty when there is none.
[[nodiscard]] QByteArray fieldValue(const Fields &fields, const QByteArray &name);

} // namespace quillon::standin
