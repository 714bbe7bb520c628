#include "fmlist-standin/request.h"

namespace quillon::standin {

namespace {

bool isHexadecimal(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

QByteArray decoded(const QByteArray &text)
{
    QByteArray result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        qsizetype digits = 0;
        while (text[i] == '%' && digits < 2 && i + digits + 1 < text.size()
            && isHexadecimal(text[i + digits + 1])) {
            ++digits;
        }
        if (digits > 0) {
            result += static_cast<char>(text.mid(i + 1, digits).toInt(nullptr, 16));
            i += digits;
        } else {
            result += text[i] == '+' ? ' ' : text[i];
        }
    }
    return result;
}

} // namespace

QByteArray Request::method() const
{
    return line.left(line.indexOf(' '));
}

QByteArray Request::target() const
{
    const qsizetype begin = line.indexOf(' ') + 1;
    return line.mid(begin, line.lastIndexOf(' ') - begin);
}

QByteArray Request::path() const
{
    return target().split('?').first();
}

QByteArray Request::query() const
{
    const QByteArray all = target();
    const qsizetype mark = all.indexOf('?');
    return mark < 0 ? QByteArray() : all.sliced(mark + 1);
}

QByteArray Request::header(const QByteArray &name) const
{
    for (const QByteArray &headerLine : headers.split('\n')) {
        const qsizetype colon = headerLine.indexOf(':');
        if (colon == name.size() && headerLine.first(colon).compare(name, Qt::CaseInsensitive) == 0) {
            return headerLine.sliced(colon + 1).trimmed();
        }
    }
    return {};
}

std::optional<Request> takeRequest(QByteArray &bytes)
{
    const qsizetype end = bytes.indexOf("\r\n\r\n");
    if (end < 0) {
        return std::nullopt;
    }
    const qsizetype lineEnd = bytes.indexOf("\r\n");
    Request request;
    request.line = bytes.first(lineEnd);
    request.headers = bytes.sliced(lineEnd + 2, end - lineEnd);
    const qsizetype length = request.header("Content-Length").toInt();
    if (bytes.size() < end + 4 + length) {
        return std::nullopt;
    }
    request.body = bytes.sliced(end + 4, length);
    bytes.remove(0, end + 4 + length);
    return request;
}

Fields formFields(const QByteArray &form)
{
    Fields fields;
    for (const QByteArray &field : form.split('&')) {
        const qsizetype equals = field.indexOf('=');
        if (equals > 0) {
            fields.emplace_back(field.first(equals), decoded(field.sliced(equals + 1)));
        }
    }
    return fields;
}

QByteArray fieldValue(const Fields &fields, const QByteArray &name)
{
    for (const auto &[key, value] : fields) {
        if (key == name) {
            return value;
        }
    }
    return {};
}

} // namespace quillon::standin
