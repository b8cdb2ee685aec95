// Runs the camera-parameters program on the simulated camera and checks its output and exit codes.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QFile>
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

TEST(CameraParametersTool, ValidatesDescriptionsAgainstTheirSchema) {
    SRun run = runTool({"validate", SIMULATED_CAMERA_DESCRIPTION});
    EXPECT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_TRUE(run.out.endsWith("validates\n"));

    // A description with an element out of order and a read cycle: both reported, the first with its line.
    QTemporaryDir folder;
    const QString path = folder.filePath("broken.xml");
    QFile broken(path);
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write(R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription xmlns="http://www.genicam.org/GenApi/Version_1_1" ModelName="Broken" VendorName="Test"
 StandardNameSpace="None" SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
 MajorVersion="1" MinorVersion="0" SubMinorVersion="0" ProductGuid="11111111-2222-3333-4444-555555555555"
 VersionGuid="11111111-2222-3333-4444-666666666666">
  <Integer Name="A">
    <pValue>B</pValue>
    <ImposedAccessMode>RO</ImposedAccessMode>
  </Integer>
  <Integer Name="B"><pValue>A</pValue></Integer>
</RegisterDescription>
)");
    broken.close();
    run = runTool({"validate", path});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.contains(path + ":8: ")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("read cycle detected : A -> B -> A")) << run.out.toStdString();

    run = runTool({"validate", folder.filePath("missing.xml")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Cannot read"));
    run = runTool({"validate"});
    EXPECT_EQ(run.exitCode, 2);
}
