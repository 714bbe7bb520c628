#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <functional>
#include <span>

namespace quillon {

/// A word of a template and the bytes that stand for it.
struct Placeholder
{
    QByteArray name;
    QByteArray value;
};

/// Appends the generated table rows of a page.
using RowWriter = std::function<void(QByteArray &page)>;

/// A page made from a template, line by line, each ended by CR LF. In each line the placeholders are replaced
/// in their order, every occurrence of one at once. When the line then holds "$RAWDATA", `writeRows` is
/// called once for it and "$RAWDATA" removed from it, so the rows stand before the line. Case counts.
[[nodiscard]] QByteArray fillTemplate(
    QByteArrayView text, std::span<const Placeholder> placeholders, const RowWriter &writeRows);

} // namespace quillon
