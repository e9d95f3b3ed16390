// The station file a window works on, and whether it holds everything.
#pragma once

#include <QString>

#include <cstdint>

// The file of the open station and the station's revision when it was last
// read or written: the station is modified when its revision moved since.
class StationDocument {
public:
    const QString& path() const { return path_; }
    // The file was read or written at this revision of the station.
    void stored(const QString& path, std::uint64_t revision)
    {
        path_ = path;
        storedRevision_ = revision;
    }
    bool modified(std::uint64_t revision) const { return revision != storedRevision_; }
    // "planned.json[*] - Vorlik" ("untitled" before the station has a file):
    // the window puts its modified mark where "[*]" stands.
    QString windowTitle() const;

private:
    QString path_;
    std::uint64_t storedRevision_ = 0;
};
