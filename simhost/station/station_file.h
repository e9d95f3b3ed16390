// Reading and writing station files.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <memory>

class Station;

// The station file: JSON with params, data, frames, robots, targets and
// programs. Saved files give every item a unique "id"; references name their
// item and may add its id ("parentId", "robotId", "carriesId", and "id" in a
// joint move), and on reading an id wins over the name.
namespace station_file {

// Reads the file; null and a message naming the file and the problem when the
// file cannot be used.
std::unique_ptr<Station> read(const QString& path, QString* error);

// Builds a station from file contents; null and the problem when they are unusable.
std::unique_ptr<Station> parse(const QByteArray& contents, QString* problem);

QJsonObject toJson(const Station& station);

// Writes the file in one piece: on failure the file on disk is left as it was.
bool write(const Station& station, const QString& path, QString* error);

}  // namespace station_file
