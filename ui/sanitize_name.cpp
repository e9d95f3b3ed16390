#include "sanitize_name.h"

#include <QRegularExpression>

QString sanitizeName(const QString& text)
{
    static const QRegularExpression notNameCharacter(QStringLiteral("[^a-zA-Z\\d\\s]"));
    QString name = text;
    name.remove(notNameCharacter);
    name.remove(QLatin1Char(' '));
    name.remove(QLatin1Char('-'));
    return name;
}
