// Fuzzes the station file reader with any bytes. A file it accepts must save
// and read back to the same station: saving keeps what it was given.
#include "station.h"
#include "station_file.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace {

// The same JSON, objects compared as maps of keys: Qt 5 orders keys that hold
// a NUL character differently from one object to the next, and may then hold
// such a key twice, of which a reader looking the key up sees one.
bool sameJson(const QJsonValue& a, const QJsonValue& b)
{
    if (a.type() != b.type())
        return false;
    if (a.isArray()) {
        const QJsonArray x = a.toArray(), y = b.toArray();
        if (x.size() != y.size())
            return false;
        for (int i = 0; i < x.size(); ++i) {
            if (!sameJson(x[i], y[i]))
                return false;
        }
        return true;
    }
    // Numbers as the reader takes them: Qt 5 keeps an integral number beyond
    // 2^53 as an integer or as a double depending on how it got it, and then
    // calls the two unequal.
    if (a.isDouble())
        return a.toDouble() == b.toDouble();
    if (!a.isObject())
        return a == b;
    std::map<QString, QJsonValue> x, y;
    const QJsonObject first = a.toObject(), second = b.toObject();
    // Each key with the value a reader looking it up gets.
    for (auto it = first.begin(); it != first.end(); ++it)
        x.insert_or_assign(it.key(), first.value(it.key()));
    for (auto it = second.begin(); it != second.end(); ++it)
        y.insert_or_assign(it.key(), second.value(it.key()));
    if (x.size() != y.size())
        return false;
    for (auto i = x.begin(), j = y.begin(); i != x.end(); ++i, ++j) {
        if (i->first != j->first || !sameJson(i->second, j->second))
            return false;
    }
    return true;
}

// Qt 5 cannot hold keys with a NUL character consistently (it sorts them one
// way and looks them up another, and may keep one twice): files with such keys
// are still read here, but their round trip says nothing about our code.
bool hasKeyWithNul(const QJsonValue& value)
{
    if (value.isArray()) {
        for (const QJsonValue& element : value.toArray()) {
            if (hasKeyWithNul(element))
                return true;
        }
        return false;
    }
    if (!value.isObject())
        return false;
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it.key().contains(QChar(0)) || hasKeyWithNul(it.value()))
            return true;
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QString problem;
    const auto station = station_file::parse(QByteArray(reinterpret_cast<const char*>(data), int(size)), &problem);
    if (!station) {
        if (problem.isEmpty())
            std::abort();  // every refusal says why
        return 0;
    }
    const QJsonObject saved = station_file::toJson(*station);
    if (hasKeyWithNul(saved))
        return 0;
    const auto again = station_file::parse(QJsonDocument(saved).toJson(), &problem);
    if (!again) {
        std::fprintf(stderr, "a saved station does not read back: %s\n", qUtf8Printable(problem));
        std::abort();
    }
    if (!sameJson(station_file::toJson(*again), saved)) {
        std::fprintf(stderr, "a saved station reads back as another one\n");
        std::abort();
    }
    return 0;
}
