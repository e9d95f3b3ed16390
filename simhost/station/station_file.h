// Reading and writing station files.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
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

// Builds a station from file contents; null and the problem when they are
// unusable. `folder` is the folder of the file the contents come from, where
// the records it keeps apart are (station_records.h); empty: there is none.
std::unique_ptr<Station> parse(const QByteArray& contents, QString* problem, const QString& folder = QString());

// The station as its file holds it, every data record as base64 text, or
// those of `apart` replaced by their references.
QJsonObject toJson(const Station& station, const QMap<QString, QJsonObject>& apart = {});

// Writes the file in one piece, with the records too large for it in files
// beside it: on failure the files on disk are left as they were.
bool write(const Station& station, const QString& path, QString* error);

}  // namespace station_file
