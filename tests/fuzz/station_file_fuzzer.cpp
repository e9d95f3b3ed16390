// Fuzzes the station file reader with any bytes. A file it accepts must save
// and read back to the same station: saving keeps what it was given.
#include "station.h"
#include "station_file.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

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
    const auto again = station_file::parse(QJsonDocument(saved).toJson(), &problem);
    if (!again) {
        std::fprintf(stderr, "a saved station does not read back: %s\n", qUtf8Printable(problem));
        std::abort();
    }
    if (station_file::toJson(*again) != saved) {
        std::fprintf(stderr, "a saved station reads back as another one\n");
        std::abort();
    }
    return 0;
}
