// Data records kept in files beside the station file.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

// A station's data records (the plug-ins' settings and maps) are held in its
// file as base64 text, which a JSON document can hold only up to a point: a
// large map record, up to the 2 GB a record may have, would not fit. The
// records that do not fit are kept apart, byte for byte, in files in the
// folder "<station file>.records" beside it, and the file names them:
//   "data": { "Zelvane-Rob Arm1": { "file": "planned.json.records/Zelvane-Rob%20Arm1.1.bin",
//                                   "bytes": 2048128036 } }
// The file name is relative to the station file's folder. Each save writes
// new record files first and the station file last, then removes the record
// files the new station file no longer names: a save that fails on the way
// leaves the station on disk as it was.
namespace station_records {

// Base64 text the station file holds at most; records beyond it go apart.
// Well under the 128 MB a JSON document of Qt before 5.15 can hold.
constexpr qint64 InlineTextBudget = 64LL * 1024 * 1024;

// The keys whose records go apart: in key order, every record whose base64
// text would take the text held in the file beyond the budget.
QSet<QString> keptApart(const QMap<QString, QByteArray>& data);

// Record files written for one save of a station file.
class RecordFiles {
public:
    explicit RecordFiles(const QString& stationPath);

    // Writes the record into a new file of the folder; its reference for the
    // station file, or an empty object and the problem.
    QJsonObject write(const QString& key, const QByteArray& bytes, QString* problem);
    // The station file was written: record files of the folder it does not
    // name go (and the folder, when nothing is left in it).
    void commit();
    // The station file could not be written: the files of this save go.
    void discard();

private:
    QString stationFolder_;
    QString folderName_;  // relative to the station's folder
    QStringList written_;  // file names in the folder, this save's
};

// Reads the station file's "data": base64 texts, and references whose files
// are checked before they are read. False and the problem (naming the
// record) when one cannot be had. `stationFolder` is the folder of the
// station file; empty when the station came as text, which can name no file.
bool readData(const QJsonObject& data, const QString& stationFolder, QMap<QString, QByteArray>* records,
              QString* problem);

}  // namespace station_records
