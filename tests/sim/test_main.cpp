#include <QApplication>

#include <gtest/gtest.h>

// The host's parts use widgets (message boxes, progress dialogs), so the
// tests run inside an application, offscreen unless told otherwise.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
