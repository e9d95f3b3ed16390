// A configuration's values as the planner's log writes them.
#include "joint_values_text.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace {
// Beyond this the C library's and Qt's notations are left to Qt's.
constexpr double LargestFast = 1e12;

// One value in fixed notation with three decimals at `out`; the end.
char* putValue(char* out, char* end, double value)
{
    if (value == 0.0)
        value = 0.0;  // -0.0 is written without its sign
    // A value exactly halfway between two results is j / 16 with j odd (the
    // half of a thousandth is dyadic only so); the C library rounds it to
    // even, Qt away from zero. Its thousandths are then exact in a double.
    const double sixteenths = value * 16.0;
    if (sixteenths == std::floor(sixteenths) && std::fmod(std::fabs(sixteenths), 2.0) == 1.0) {
        const long long thousandths = static_cast<long long>(value * 1000.0 + (value > 0 ? 0.5 : -0.5));
        if (thousandths < 0)
            *out++ = '-';
        const long long magnitude = std::llabs(thousandths);
        out = std::to_chars(out, end, magnitude / 1000).ptr;
        *out++ = '.';
        const long long fraction = magnitude % 1000;
        *out++ = char('0' + fraction / 100);
        *out++ = char('0' + fraction / 10 % 10);
        *out++ = char('0' + fraction % 10);
        return out;
    }
    return std::to_chars(out, end, value, std::chars_format::fixed, 3).ptr;
}
}  // namespace

QString jointValuesText(const JointVector& joints)
{
    const double* values = joints.values();
    const int count = joints.count();
    for (int i = 0; i < count; ++i)
        if (!(std::fabs(values[i]) < LargestFast))
            return joints.toText(QStringLiteral(", "), 3);  // not a number, infinite, or huge
    QString text;
    text.reserve(count * 12);
    char buffer[40];
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            text += QLatin1String(", ");
        const char* end = putValue(buffer, buffer + sizeof buffer, values[i]);
        text += QLatin1String(buffer, int(end - buffer));
    }
    return text;
}
