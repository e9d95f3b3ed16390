#include <QApplication>

#include <gtest/gtest.h>

// Tests that open widgets or progress dialogs need an application object; the
// offscreen platform lets them run without a display.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
