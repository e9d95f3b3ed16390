#include "number_text.h"

#include <QLocale>

QString exactNumberText(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}
