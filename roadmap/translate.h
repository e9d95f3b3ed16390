// Translating the planner's texts kept in constants.
#pragma once

#include <QCoreApplication>
#include <QString>

// All user texts of the planner are translated in the plug-in's context.
inline QString planTr(const char* text)
{
    return QCoreApplication::translate("PluginAutoPRM", text);
}
