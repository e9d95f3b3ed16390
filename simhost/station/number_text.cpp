// Numbers written as the shortest text that reads back the same.
#include "number_text.h"

#include <QLocale>

QString exactNumberText(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}
