#include "support/MessageCheck.h"
#include "support/Spin.h"

#include <gmock/gmock.h>

#include <QtCore/QProcess>
#include <QtWidgets/QApplication>

namespace {

/// Windows get the keyboard from a window manager only; it says when it is ready.
bool startWindowManager(QProcess& process)
{
    process.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable"), QStringLiteral("--startup"),
                                              QStringLiteral("echo ready")});
    QByteArray said;
    return process.waitForStarted() && kvtest::spinUntil([&] {
               said += process.readAllStandardOutput();
               return said.contains("ready");
           });
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QProcess windowManager;
    if (!startWindowManager(windowManager))
        return EXIT_FAILURE;
    kvtest::installMessageCheck();
    const int result = RUN_ALL_TESTS();
    windowManager.terminate();
    windowManager.waitForFinished();
    return result;
}
