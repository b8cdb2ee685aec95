// camera-parameters on Aravis' fake GigE Vision camera on 127.0.0.1: a camera that goes away under a watch
// or a shell, one that comes back, and one that another application controls.
#include "../FakeGigECamera.h"
#include "ToolTestSupport.h"
#include <QElapsedTimer>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

const QString device = QString("aravis:") + CFakeGigECamera::deviceId;

// Waits until the process has printed the text on the channel, or the milliseconds pass; answers all of
// that channel's output so far.
QString waitFor(QProcess& process, QString& seen, QProcess::ProcessChannel channel, const QString& text,
                int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (!seen.contains(text) && clock.elapsed() < milliseconds) {
        process.waitForReadyRead(100);
        process.setReadChannel(channel);
        seen += QString::fromUtf8(process.readAll());
    }
    return seen;
}

}  // namespace

// Each test starts with the camera running and found on the network.
class CameraParametersToolOnGigE : public ::testing::Test {
protected:
    void SetUp() override {
        if (!CFakeGigECamera::installed())
            GTEST_SKIP() << CFakeGigECamera::program << " is not installed";
        ASSERT_TRUE(startCamera());
    }
    bool startCamera() {
        const bool started = camera.start();
        QThread::msleep(1500);
        return started;
    }
    CFakeGigECamera camera;
};

TEST_F(CameraParametersToolOnGigE, WatchReportsADeviceThatStopsAnswering) {
    QProcess watch;
    watch.start(CAMERA_PARAMETERS_TOOL, {"--device", device, "watch", "Width", "--seconds", "60"});
    ASSERT_TRUE(watch.waitForStarted(5000));
    QThread::msleep(1500);
    camera.stop();
    ASSERT_TRUE(watch.waitForFinished(45000)) << "watch did not notice the loss";
    EXPECT_EQ(watch.exitCode(), 1);
    const QString err = QString::fromUtf8(watch.readAllStandardError());
    EXPECT_TRUE(err.contains("Device '" + device + "' ")) << err.toStdString();
    EXPECT_TRUE(err.contains("stopped answering") || err.contains("is lost")) << err.toStdString();
    // One clear line: no message of the library's worker thread, and the line is ended.
    EXPECT_FALSE(err.contains("std::exception") || err.contains("could not be forwarded"))
        << err.toStdString();
    EXPECT_TRUE(err.endsWith('\n'));
}

// A shell names a device that went away instead of showing what it read before, and reconnect opens it
// again once it is back.
TEST_F(CameraParametersToolOnGigE, AShellNamesALostDeviceAndReconnects) {
    QProcess shell;
    shell.start(CAMERA_PARAMETERS_TOOL, {"--device", device, "shell"});
    ASSERT_TRUE(shell.waitForStarted(5000));
    QString out, err;
    shell.write("get Width\n");
    ASSERT_TRUE(waitFor(shell, out, QProcess::StandardOutput, "@CameraDevice/Width", 15000)
                    .contains(QRegularExpression("Width +Integer +RW +Beginner +512")))
        << out.toStdString();

    camera.stop();
    shell.write("get Width\n");
    waitFor(shell, err, QProcess::StandardError, "'reconnect' opens", 30000);
    EXPECT_TRUE(err.contains("Device '" + device + "' ")) << err.toStdString();
    EXPECT_EQ(out.count("@CameraDevice/Width"), 1)
        << "a kept value was shown as current: " << out.toStdString();
    // Known lost now: the next command says so at once.
    QElapsedTimer clock;
    clock.start();
    shell.write("get Height\n");
    waitFor(shell, err, QProcess::StandardError, "is lost", 5000);
    EXPECT_LT(clock.elapsed(), 2000);
    EXPECT_TRUE(err.contains("Device '" + device + "' is lost")) << err.toStdString();

    ASSERT_TRUE(startCamera());
    shell.write("reconnect\nget Width\nquit\n");
    waitFor(shell, out, QProcess::StandardOutput, "opened again", 20000);
    ASSERT_TRUE(shell.waitForFinished(20000) || shell.state() == QProcess::NotRunning);
    out += QString::fromUtf8(shell.readAllStandardOutput());
    ASSERT_EQ(shell.exitStatus(), QProcess::NormalExit) << out.toStdString() << err.toStdString();
    EXPECT_TRUE(out.contains("Device '" + device + "' opened again.")) << out.toStdString();
    EXPECT_EQ(out.count("@CameraDevice/Width"), 2) << out.toStdString();
    EXPECT_EQ(shell.exitCode(), 1);  // the shell tells that a command failed
}

// While another application holds control of the camera, features are read and writes are refused at
// once, naming the reason.
TEST_F(CameraParametersToolOnGigE, ControlHeldByAnotherApplicationIsNamed) {
    QProcess holder;
    holder.start(CAMERA_PARAMETERS_TOOL, {"--device", device, "watch", "Width", "--seconds", "40"});
    QString held;
    ASSERT_FALSE(waitFor(holder, held, QProcess::StandardOutput, "Width = ", 15000).isEmpty());

    SRun run = runTool({"--device", device, "get", "Width"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QRegularExpression("Width +Integer +RO +Beginner +512")))
        << run.out.toStdString();
    EXPECT_TRUE(run.err.contains("is controlled by another application")) << run.err.toStdString();

    QElapsedTimer clock;
    clock.start();
    run = runTool({"--device", device, "set", "Width=256"});
    EXPECT_EQ(run.exitCode, 5) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains("another application controls device '" + device + "'"))
        << run.err.toStdString();
    // Opening waits for Aravis' attempt to take control; the refused write itself waits for nothing.
    EXPECT_LT(clock.elapsed(), 7000);
    holder.kill();
    holder.waitForFinished(5000);
}

// Devices are listed by the name --device takes, with their model, protocol and address.
TEST_F(CameraParametersToolOnGigE, DevicesAreListedAsTheDeviceOptionTakesThem) {
    QString line;
    for (int attempt = 0; attempt < 10 && line.isEmpty(); ++attempt) {
        QThread::msleep(500);
        const SRun run = runTool({"devices"});
        EXPECT_EQ(run.exitCode, 0);
        for (const QString& candidate : run.out.split('\n')) {
            if (candidate.startsWith(QString("aravis:") + CFakeGigECamera::deviceId))
                line = candidate;
        }
    }
    ASSERT_FALSE(line.isEmpty()) << "the fake camera was not listed";
    EXPECT_TRUE(line.contains("GigEVision")) << line.toStdString();
    EXPECT_TRUE(line.contains("127.0.0.1")) << line.toStdString();
    const SRun opened = runTool({"--device", line.section(' ', 0, 0), "get", "Width"});
    EXPECT_EQ(opened.exitCode, 0) << opened.err.toStdString();
}
