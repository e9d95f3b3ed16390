// Program names made from item names: letters, digits and whitespace but the blank.
#include "sanitize_name.h"

namespace {
bool isAsciiLetterOrDigit(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9');
}
}  // namespace

// Letters and digits must be ASCII; whitespace may be any (a no-break space
// or an em space survives like a tab), except the blank itself.
QString sanitizeName(const QString& text)
{
    QString name;
    name.reserve(text.size());
    for (const QChar c : text) {
        if ((isAsciiLetterOrDigit(c) || c.isSpace()) && c != QLatin1Char(' '))
            name.append(c);
    }
    return name;
}
