// Runs the tests of the windows: the real ones, on a screen that is not there.
#include "tests/support/TemporaryFolder.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Whoever runs them keeps their own documents to themselves.
    const vantrel::TemporaryFolder home;
    qputenv("HOME", home.Path().string().c_str());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
