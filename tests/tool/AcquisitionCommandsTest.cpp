// The chunks and events commands: each frame's chunk values and each event, from the simulated camera, and
// what they say when there is nothing to show.
#include "ToolTestSupport.h"
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

QStringList linesOf(const QString& text, const QString& prefix) {
    QStringList found;
    for (const QString& line : text.split('\n')) {
        if (line.startsWith(prefix))
            found.append(line);
    }
    return found;
}

}  // namespace

TEST(CameraParametersTool, ChunksPrintEveryFramesValues) {
    // Text: one line a frame, in order, with the values the simulated camera put in the frame.
    SRun run = runShell({"set ChunkModeActive=1 Width=320", "chunks --frames 5"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList frames = linesOf(run.out, "frame ");
    ASSERT_EQ(frames.size(), 5);
    for (int i = 0; i < frames.size(); ++i) {
        EXPECT_TRUE(frames[i].startsWith(QString("frame %1: ").arg(i))) << frames[i].toStdString();
        EXPECT_TRUE(frames[i].contains(QString(" ChunkFrameID=%1 ").arg(i))) << frames[i].toStdString();
        EXPECT_TRUE(frames[i].contains(" ChunkWidth=320")) << frames[i].toStdString();
        EXPECT_TRUE(frames[i].contains(" ChunkPixelFormat=Mono8 ")) << frames[i].toStdString();
    }

    // JSON: one object a frame, values as numbers; a chunk switched off is not there.
    run =
        runShell({"set ChunkModeActive=1 ChunkSelector=CRC ChunkEnable=0", "chunks --frames 2"}, {"--json"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QList<QJsonObject> objects;
    for (const QString& line : run.out.split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        if (object.contains("frame"))
            objects.append(object);
    }
    ASSERT_EQ(objects.size(), 2);
    EXPECT_EQ(objects[1]["ChunkFrameID"].toInt(), 1);
    EXPECT_TRUE(objects[1]["ChunkTimestamp"].isDouble());
    EXPECT_GT(objects[1]["ChunkTimestamp"].toDouble(), objects[0]["ChunkTimestamp"].toDouble());
    EXPECT_FALSE(objects[0].contains("ChunkCRC"));
}

TEST(CameraParametersTool, ChunksAndEventsNameWhatIsMissing) {
    // Chunk mode off.
    SRun run = runTool({"chunks"});
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_TRUE(run.err.contains("Chunk mode is off: 'set ChunkModeActive=1' first"))
        << run.err.toStdString();
    // A single-frame acquisition ends before the frames asked for.
    run = runShell({"set ChunkModeActive=1 AcquisitionMode=SingleFrame", "chunks --frames 3"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(linesOf(run.out, "frame ").size(), 1);
    EXPECT_TRUE(run.err.contains("The acquisition ended after 1 of 3 frames.")) << run.err.toStdString();
    // An acquisition armed for a trigger that never comes: started, but no frame.
    run =
        runShell({"set ChunkModeActive=1 TriggerSelector=AcquisitionStart TriggerMode=On TriggerSource=Line0",
                  "chunks --frames 1"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(linesOf(run.out, "frame ").isEmpty()) << run.out.toStdString();
    EXPECT_TRUE(
        run.err.contains(QRegularExpression("No frame arrived in 3\\.[0-9] s: does the acquisition wait for "
                                            "a trigger\\?")))
        << run.err.toStdString();
    // No event's notification is on.
    run = runTool({"events", "--seconds", "0.3"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("No event arrived in 0.3 s")) << run.err.toStdString();
    // A device that sends the tool no frames: a description without its camera.
    run = runTool({"--device", QString("file:") + SIMULATED_CAMERA_DESCRIPTION, "chunks"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("sends this tool no frames")) << run.err.toStdString();
    // Wrong usage.
    EXPECT_EQ(runTool({"chunks", "Width"}).exitCode, 2);
    EXPECT_EQ(runTool({"chunks", "--frames", "0"}).exitCode, 2);
}

TEST(CameraParametersTool, EventsPrintEachEventWithItsData) {
    SRun run = runShell({"set EventSelector=ExposureEnd EventNotification=On", "events --seconds 0.5"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QStringList events;
    for (const QString& line : run.out.split('\n')) {
        if (line.contains("  EventExposureEnd "))
            events.append(line);
    }
    // 30 frames a second: about fifteen, each with the frame it ended, in order.
    ASSERT_GE(events.size(), 5);
    for (int i = 0; i < events.size(); ++i)
        EXPECT_TRUE(events[i].contains(QString("EventExposureEndFrameID=%1 ").arg(i)))
            << events[i].toStdString();
    EXPECT_TRUE(events[0].contains("EventExposureEndTimestamp=")) << events[0].toStdString();
}

TEST(CameraParametersTool, ChunksAndEventsNameADeviceThatStopsAnswering) {
    // The simulated camera is unplugged after its third frame: the frames it sent are shown, then the loss.
    SRun run =
        runShell({"set ChunkModeActive=1 TestDisconnectAfterFrames=3", "chunks --frames 10", "get Width"});
    EXPECT_EQ(run.exitCode, 1);
    const QStringList frames = linesOf(run.out, "frame ");
    ASSERT_EQ(frames.size(), 3) << run.out.toStdString();
    EXPECT_TRUE(frames[2].contains(" ChunkFrameID=2 ")) << frames[2].toStdString();
    EXPECT_TRUE(run.err.contains("Device 'sim' stopped answering after 3 of 10 frames."))
        << run.err.toStdString();
    // Known lost now: the next command says so instead of reading.
    EXPECT_TRUE(run.err.contains("Device 'sim' is lost")) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains("@CameraDevice/Width")) << run.out.toStdString();

    run = runShell({"set EventSelector=ExposureEnd EventNotification=On TestDisconnectAfterFrames=2",
                    "events --seconds 5"});
    EXPECT_EQ(run.exitCode, 1);
    QStringList events;
    for (const QString& line : run.out.split('\n')) {
        if (line.contains("  EventExposureEnd "))
            events.append(line);
    }
    EXPECT_EQ(events.size(), 2) << run.out.toStdString();
    EXPECT_TRUE(run.err.contains("Device 'sim' stopped answering after 2 events.")) << run.err.toStdString();
}

TEST(CameraParametersTool, ChunksAndEventsOnADeviceAravisOpens) {
    // Aravis' fake camera streams frames but has no chunk data, and the tool reads no events from it.
    SRun run = runTool({"--device", "aravis:fake", "chunks"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Device 'aravis:fake' has no chunk data (no ChunkModeActive feature)."))
        << run.err.toStdString();
    run = runTool({"--device", "aravis:fake", "events"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Device 'aravis:fake' sends this tool no events")) << run.err.toStdString();
}
