// Data records kept in files beside the station file.
#include "station_records.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUrl>

#include <limits>
#include <new>

namespace station_records {

namespace {

// A record holds at most what a QByteArray does, with room for its header.
constexpr qint64 LargestRecord = std::numeric_limits<int>::max() - 64;
// Keys are encoded into file names; a long one is cut, the number keeps names apart.
constexpr int LongestKeyInName = 100;

qint64 base64Length(qint64 bytes)
{
    return 4 * ((bytes + 2) / 3);
}

}  // namespace

QSet<QString> keptApart(const QMap<QString, QByteArray>& data)
{
    QSet<QString> apart;
    qint64 inlineText = 0;
    for (auto it = data.begin(); it != data.end(); ++it) {
        const qint64 text = base64Length(it.value().size());
        if (inlineText + text > InlineTextBudget)
            apart.insert(it.key());
        else
            inlineText += text;
    }
    return apart;
}

RecordFiles::RecordFiles(const QString& stationPath)
    : stationFolder_(QFileInfo(stationPath).absolutePath()),
      folderName_(QFileInfo(stationPath).fileName() + QStringLiteral(".records"))
{
}

QJsonObject RecordFiles::write(const QString& key, const QByteArray& bytes, QString* problem)
{
    const QDir station(stationFolder_);
    if (!station.mkpath(folderName_)) {
        *problem = QStringLiteral("cannot make the folder %1 for the records kept apart")
                       .arg(station.filePath(folderName_));
        return QJsonObject();
    }
    const QDir folder(station.filePath(folderName_));
    const QString stem = QString::fromLatin1(QUrl::toPercentEncoding(key).left(LongestKeyInName));
    QString name;
    for (int number = 1; name.isEmpty() || folder.exists(name); ++number)
        name = stem + QLatin1Char('.') + QString::number(number) + QStringLiteral(".bin");  // the stem holds '%'
    QSaveFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        *problem = QStringLiteral("cannot write the record %1 to %2: %3").arg(key, file.fileName(), file.errorString());
        return QJsonObject();
    }
    written_ << name;
    return QJsonObject{{QStringLiteral("file"), folderName_ + QLatin1Char('/') + name},
                       {QStringLiteral("bytes"), double(bytes.size())}};
}

void RecordFiles::commit()
{
    QDir folder(QDir(stationFolder_).filePath(folderName_));
    if (!folder.exists())
        return;
    for (const QString& name : folder.entryList({QStringLiteral("*.bin")}, QDir::Files | QDir::Hidden)) {
        if (!written_.contains(name))
            folder.remove(name);
    }
    if (folder.isEmpty())
        QDir(stationFolder_).rmdir(folderName_);
}

void RecordFiles::discard()
{
    QDir folder(QDir(stationFolder_).filePath(folderName_));
    for (const QString& name : written_)
        folder.remove(name);
    written_.clear();
    if (folder.exists() && folder.isEmpty())
        QDir(stationFolder_).rmdir(folderName_);
}

namespace {

// The bytes a reference names, checked against the file before they are read.
bool readApart(const QJsonObject& reference, const QString& stationFolder, QByteArray* bytes, QString* problem)
{
    const QJsonValue fileValue = reference.value(QStringLiteral("file"));
    const QJsonValue bytesValue = reference.value(QStringLiteral("bytes"));
    const double size = bytesValue.toDouble(-1.0);
    const QString name = fileValue.toString();
    if (reference.size() != 2 || !fileValue.isString() || name.isEmpty() || !bytesValue.isDouble() || !(size >= 0)
        || size > LargestRecord || size != qint64(size)) {
        *problem = QStringLiteral("must be base64 text or {\"file\": name, \"bytes\": size of at most %1}")
                       .arg(LargestRecord);
        return false;
    }
    if (QDir::isAbsolutePath(name) || QDir::cleanPath(name).startsWith(QLatin1String(".."))) {
        *problem = QStringLiteral("names the file %1, which is not in the station's folder").arg(name);
        return false;
    }
    if (stationFolder.isEmpty()) {
        *problem = QStringLiteral("is kept in the file %1 beside a station file, and there is none").arg(name);
        return false;
    }
    QFile file(QDir(stationFolder).filePath(name));
    const QFileInfo info(file);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        *problem = QStringLiteral("is kept in %1, which cannot be read").arg(file.fileName());
        return false;
    }
    if (info.size() != qint64(size)) {
        *problem = QStringLiteral("is kept in %1, which holds %2 bytes instead of %3")
                       .arg(file.fileName())
                       .arg(info.size())
                       .arg(qint64(size));
        return false;
    }
    try {
        *bytes = QByteArray(int(size), Qt::Uninitialized);
    } catch (const std::bad_alloc&) {
        *problem = QStringLiteral("needs %1 bytes, more memory than there is").arg(qint64(size));
        return false;
    }
    if (file.read(bytes->data(), qint64(size)) != qint64(size)) {
        *bytes = QByteArray();
        *problem = QStringLiteral("is kept in %1, which could not be read whole").arg(file.fileName());
        return false;
    }
    return true;
}

}  // namespace

bool readData(const QJsonObject& data, const QString& stationFolder, QMap<QString, QByteArray>* records,
              QString* problem)
{
    for (auto it = data.begin(); it != data.end(); ++it) {
        const QString name = QLatin1Char('"') + it.key() + QLatin1Char('"');
        QByteArray bytes;
        if (it.value().isObject()) {
            QString why;
            if (!readApart(it.value().toObject(), stationFolder, &bytes, &why)) {
                *problem = QStringLiteral("data %1 %2").arg(name, why);
                return false;
            }
        } else {
            const auto decoded = QByteArray::fromBase64Encoding(it.value().toString().toLatin1(),
                                                                QByteArray::AbortOnBase64DecodingErrors);
            if (!it.value().isString() || !decoded) {
                *problem = QStringLiteral("data %1 is not base64 text").arg(name);
                return false;
            }
            bytes = *decoded;
        }
        records->insert(it.key(), bytes);
    }
    return true;
}

}  // namespace station_records
