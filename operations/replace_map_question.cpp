// The "Replace map" question after a cancelled computation.
#include "replace_map_question.h"

#include "translate.h"

#include <QMessageBox>

bool askReplaceMap(QWidget* parent)
{
    const QMessageBox::StandardButton answer = QMessageBox::question(
        parent, QCoreApplication::translate("PluginAutoPRM", "Replace map"),
        QCoreApplication::translate(
            "PluginAutoPRM",
            "Operation cancelled:<br>Do you want to replace the previous map even if the operation didn't "
            "complete?"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::NoButton);
    return answer == QMessageBox::Yes;
}
