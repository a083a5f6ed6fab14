// A value is a text with escapes, in quotes if necessary. Data is written as the text
// "@ByteArray(...)", one character for each byte. Before a text that starts with "@", another "@"
// is written.

#include "platform/IniText.h"

#include <QStringView>

#include <algorithm>
#include <utility>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1String dataBegin("@ByteArray(");
constexpr QLatin1String textBegin("@String(");

bool isHeader(const QByteArray& line) {
    return line.trimmed().startsWith('[');
}

bool isGeneral(const QByteArray& header) {
    return header.trimmed().toLower() == "[general]";
}

bool isHexDigit(char16_t character) {
    return (character >= u'0' && character <= u'9') || (character >= u'a' && character <= u'f') ||
           (character >= u'A' && character <= u'F');
}

// The character that a backslash and this letter stand for. Other letters stand for themselves.
char16_t escaped(char16_t letter) {
    constexpr std::u16string_view letters = u"abfnrtv";
    constexpr std::u16string_view characters = u"\a\b\f\n\r\t\v";
    const std::size_t at = letters.find(letter);
    return at == std::u16string_view::npos ? letter : characters[at];
}

// Removes the digits at the start of `text`, and returns the character with that code.
char16_t takeCode(QStringView& text, unsigned base) {
    unsigned code = 0;
    while (!text.isEmpty() && isHexDigit(text.front().unicode())) {
        const char16_t digit = text.front().toLower().unicode();
        const unsigned number = digit <= u'9' ? digit - u'0' : digit - u'a' + 10U;
        if (number >= base) {
            break;
        }
        code = code * base + number;
        text = text.sliced(1);
    }
    return static_cast<char16_t>(code);
}

// White space outside ASCII is part of a value: QByteArray::trimmed keeps it.
QString unescaped(const QByteArray& written) {
    const QString line = QString::fromUtf8(written.trimmed());
    QString result;
    for (QStringView rest = line; !rest.isEmpty();) {
        const QChar character = rest.front();
        rest = rest.sliced(1);
        if (character == u'"') {
            continue;  // quotes only keep the blanks at both ends
        }
        if (character != u'\\' || rest.isEmpty()) {
            result += character;
        } else {
            const char16_t letter = rest.front().unicode();
            if (letter >= u'0' && letter <= u'7') {
                result += QChar(takeCode(rest, 8));
            } else {
                rest = rest.sliced(1);
                result += QChar(letter == u'x' ? takeCode(rest, 16) : escaped(letter));
            }
        }
    }
    return result;
}

// The text with escapes, in quotes if necessary. A hexadecimal digit after a code would be read as
// part of the code, so the digit is also written as a code. So is every byte order mark, because
// QSettings drops a byte order mark after a code.
QByteArray quoted(const QString& text) {
    QByteArray result;
    bool afterCode = false;
    bool plain = true;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        const bool pair =
            character.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        const char16_t code = character.unicode();
        if (code < 0x20 || code == QChar::ByteOrderMark || (character.isSurrogate() && !pair) ||
            (afterCode && isHexDigit(code))) {
            result += "\\x" + QByteArray::number(code, 16);
            afterCode = true;
            plain = false;
            continue;
        }
        afterCode = false;
        if (code == u'\\' || code == u'"') {
            result += '\\';
        }
        result += text.sliced(i, pair ? 2 : 1).toUtf8();
        i += pair ? 1 : 0;
        plain = plain && (character.isLetterOrNumber() || u"/._-+"_s.contains(character));
    }
    return plain ? result : '"' + result + '"';
}

QVariant decoded(const QString& text) {
    if (text == u"@Invalid()") {
        return {};
    }
    if (text.startsWith(dataBegin) && text.endsWith(u')')) {
        return text.sliced(dataBegin.size()).chopped(1).toLatin1();
    }
    if (text.startsWith(textBegin) && text.endsWith(u')')) {
        return text.sliced(textBegin.size()).chopped(1);
    }
    return text.startsWith("@@"_L1) ? text.sliced(1) : text;
}

QString encoded(const QVariant& value) {
    if (value.typeId() == QMetaType::QByteArray) {
        return dataBegin + QString::fromLatin1(value.toByteArray()) + u')';
    }
    const QString text = value.toString();
    return text.startsWith(u'@') ? u'@' + text : text;
}

}  // namespace

IniText::IniText(const QByteArray& content) : _lines(content.split('\n')) {
    // After a final line feed, the last piece is empty. `content` ends every line with a line feed.
    if (_lines.last().isEmpty()) {
        _lines.removeLast();
    }
}

qsizetype IniText::lineOf(const QString& key) const {
    const QByteArray name = key.toUtf8();
    qsizetype found = -1;
    bool general = true;
    for (qsizetype i = 0; i < _lines.size(); ++i) {
        const QByteArray& line = _lines.at(i);
        if (isHeader(line)) {
            general = isGeneral(line);
        } else if (general) {
            const qsizetype equals = line.indexOf('=');
            found = equals >= 0 && line.first(equals).trimmed() == name ? i : found;
        }
    }
    return found;
}

std::optional<QVariant> IniText::value(const QString& key) const {
    const qsizetype line = lineOf(key);
    if (line < 0) {
        return std::nullopt;
    }
    const QByteArray& found = _lines.at(line);
    return decoded(unescaped(found.sliced(found.indexOf('=') + 1)));
}

void IniText::setValue(const QString& key, const QVariant& value) {
    QByteArray written = key.toUtf8() + '=' + quoted(encoded(value));
    if (const qsizetype line = lineOf(key); line >= 0) {
        _lines[line] = std::move(written);
        return;
    }
    const auto last = std::find_if(_lines.crbegin(), _lines.crend(), isHeader);
    if (last == _lines.crend() || !isGeneral(*last)) {
        _lines.append("[General]");
    }
    _lines.append(std::move(written));
}

QByteArray IniText::content() const {
    QByteArray content;
    for (const QByteArray& line : _lines) {
        content += line + '\n';
    }
    return content;
}

}  // namespace ambulet
