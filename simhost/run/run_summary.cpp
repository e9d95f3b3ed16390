// The summary record that ends a scripted run.
#include "run_summary.h"

QJsonObject summaryRecord(const CellStats& stats, double seconds)
{
    return QJsonObject{{QStringLiteral("type"), QStringLiteral("summary")},
                       {QStringLiteral("seconds"), seconds},
                       {QStringLiteral("collisionTests"), double(stats.configurationTests + stats.moveTests)},
                       {QStringLiteral("configurationTests"), double(stats.configurationTests)},
                       {QStringLiteral("moveTests"), double(stats.moveTests)},
                       {QStringLiteral("cellConfigurations"), double(stats.configurations)},
                       {QStringLiteral("cellSeconds"), stats.seconds},
                       {QStringLiteral("cellConfigurationsPerSecond"), stats.perSecond()}};
}
