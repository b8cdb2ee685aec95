// Runs the camera-parameters program on the simulated camera and checks its output and exit codes.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <gtest/gtest.h>

namespace {

struct SRun {
    int exitCode;
    QString out;
    QString err;
};

SRun runTool(const QStringList& arguments) {
    QProcess process;
    process.start(CAMERA_PARAMETERS_TOOL, arguments);
    EXPECT_TRUE(process.waitForFinished(60000)) << arguments.join(' ').toStdString();
    return SRun{process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
}

}  // namespace

TEST(CameraParametersTool, ListsGetsAndSetsOnTheSimulatedCamera) {
    SRun run = runTool({"list"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QRegExp("@CameraDevice/Width +Integer +RW +Beginner +640 px")));
    EXPECT_TRUE(run.out.contains("@CameraDevice/DeviceModelName"));
    EXPECT_FALSE(run.out.contains("@CameraDevice/WidthReg"));  // not a feature
    run = runTool({"list", "--visibility", "beginner", "--filter", "offset"});
    EXPECT_EQ(run.out.count('\n'), 3);  // header, OffsetX, OffsetY

    run = runTool({"get", "Width", "@CameraDevice/PixelFormat"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains("640 px"));
    EXPECT_TRUE(run.out.contains("Mono8"));

    run = runTool({"--json", "set", "Width", "1024"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QJsonObject written = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(written["name"].toString(), "@CameraDevice/Width");
    EXPECT_EQ(written["value"].toString(), "1024");
    EXPECT_EQ(written["access"].toString(), "RW");
}

TEST(CameraParametersTool, ReportsBadInputWithExitCodes) {
    SRun run = runTool({"get", "NoSuchFeature"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.err.contains("Unknown parameter 'NoSuchFeature'"));
    run = runTool({"set", "Width", "1000"});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_TRUE(run.err.contains("must be dividable without rest by Inc = 16"));
    run = runTool({"set", "PixelFormat", "Mono99"});
    EXPECT_EQ(run.exitCode, 4);
    run = runTool({"set", "DeviceVendorName", "Other"});
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_TRUE(run.err.contains("Node not writable."));
    run = runTool({"get", "TestWriteOnlyInteger"});
    EXPECT_EQ(run.exitCode, 5);
    run = runTool({"frobnicate"});
    EXPECT_EQ(run.exitCode, 2);
    run = runTool({"set", "Width"});
    EXPECT_EQ(run.exitCode, 2);
    run = runTool({"--device", "aravis:NoSuchCamera", "list"});
    EXPECT_EQ(run.exitCode, 6);
    EXPECT_TRUE(run.err.contains("Cannot open device 'aravis:NoSuchCamera'"));
}

TEST(CameraParametersTool, RelationsDumpWatchAndAravisFakeCamera) {
    SRun run = runTool({"--json", "relations", "GainSelector"});
    const QJsonObject relations = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(relations["selectedFeatures"].toArray().size(), 2);
    EXPECT_EQ(relations["categoryPath"].toArray().last().toString(), "@CameraDevice/AnalogControl");

    run = runTool({"dump"});
    const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    EXPECT_GT(lines.size(), 150);
    for (const QString& line : lines) {
        ASSERT_TRUE(QJsonDocument::fromJson(line.toUtf8()).isObject()) << line.toStdString();
    }

    // The temperature drifts a tenth of a degree a second; watching polls it.
    run = runTool({"watch", "DeviceTemperature", "--seconds", "2.5"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_GE(run.out.count("@CameraDevice/DeviceTemperature = "), 2) << run.out.toStdString();

    run = runTool({"--device", "aravis:fake", "get", "Width"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains("@CameraDevice/Width"));
    EXPECT_TRUE(run.out.contains("512"));
}
