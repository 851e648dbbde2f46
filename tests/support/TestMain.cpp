// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include <gtest/gtest.h>

#if defined(ORVANE_TEST_APP_widgets)
#include <QApplication>
using TestApplication = QApplication;
#elif defined(ORVANE_TEST_APP_gui)
#include <QGuiApplication>
using TestApplication = QGuiApplication;
#else
#include <QCoreApplication>
using TestApplication = QCoreApplication;
#endif

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    qputenv("FONTCONFIG_FILE", ORVANE_TEST_FONTS);
    TestApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
