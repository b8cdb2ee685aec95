// camera-parameters for scripts and for what no feature shows: JSON from every command (errors included,
// numbers as numbers), registers by address, and a description file browsed without its camera.
#include "ToolTestSupport.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QJsonObject json(const QString& line) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line.trimmed().toUtf8(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << line.toStdString();
    return document.object();
}

QList<QJsonObject> jsonLines(const QString& text) {
    QList<QJsonObject> objects;
    for (const QString& line : text.split('\n', Qt::SkipEmptyParts))
        objects.append(json(line));
    return objects;
}

}  // namespace

TEST(CameraParametersTool, JsonFromEveryCommandWithErrorsAndNumbers) {
    // Values: numbers for integers and floats, true/false for booleans, the text beside them.
    SRun run = runTool({"--json", "get", "Width", "Gain", "PixelFormat", "ReverseX"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QList<QJsonObject> values = jsonLines(run.out);
    ASSERT_EQ(values.size(), 4);
    EXPECT_TRUE(values[0]["value"].isDouble());
    EXPECT_EQ(values[0]["value"].toDouble(), 640);
    EXPECT_EQ(values[0]["text"].toString(), "640");
    EXPECT_TRUE(values[1]["value"].isDouble());
    EXPECT_EQ(values[1]["unit"].toString(), "dB");
    EXPECT_EQ(values[2]["value"].toString(), "Mono8");
    EXPECT_FALSE(values[2].contains("text"));
    EXPECT_TRUE(values[3]["value"].isBool()) << run.out.toStdString();

    // Errors: one JSON object on standard error with the exit code, standard output left clean.
    run = runTool({"--json", "set", "Width=5000"});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
    QJsonObject error = json(run.err);
    EXPECT_EQ(error["exitCode"].toInt(), 4);
    EXPECT_TRUE(error["errors"].toArray().at(0).toString().startsWith("Value '5000' refused"))
        << run.err.toStdString();
    run = runTool({"--json", "get", "Widht"});
    EXPECT_EQ(json(run.err)["exitCode"].toInt(), 3);
    run = runTool({"--json", "frobnicate"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(json(run.err)["exitCode"].toInt(), 2) << run.err.toStdString();

    QTemporaryDir folder;
    run = runTool({"--json", "load", folder.path()});
    EXPECT_EQ(run.exitCode, 7);
    EXPECT_TRUE(json(run.err)["errors"].toArray().at(0).toString().contains("it is a folder"));
    const QString settings = folder.filePath("settings.txt");
    run = runTool({"--json", "save", settings});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_GT(json(run.out)["saved"].toInt(), 0);
    run = runTool({"--json", "load", settings});
    EXPECT_EQ(json(run.out)["loaded"].toInt(),
              json(runTool({"--json", "save", settings}).out)["saved"].toInt());

    // The other commands: one object a line.
    run = runTool({"--json", "execute", "DeviceReset"});
    EXPECT_TRUE(json(run.out)["done"].toBool()) << run.out.toStdString();
    run = runTool({"--json", "genicam"});
    EXPECT_TRUE(json(run.out)["description"].toString().contains("<RegisterDescription"));
    run = runTool({"--json", "files"});
    const QList<QJsonObject> files = jsonLines(run.out);
    ASSERT_FALSE(files.isEmpty());
    EXPECT_TRUE(files[0]["size"].isDouble()) << run.out.toStdString();
    run = runTool({"--json", "devices"});
    EXPECT_EQ(run.exitCode, 0);
    for (const QJsonObject& found : jsonLines(run.out))
        EXPECT_TRUE(found["device"].toString().startsWith("aravis:"));
    const QString broken = writeDescription(folder.filePath("broken.xml"), R"(
<Integer Name="Width"><pValue>Missing</pValue></Integer>
)");
    run = runTool({"--json", "validate", broken});
    EXPECT_EQ(run.exitCode, 1);
    const QJsonObject validation = json(run.out);
    EXPECT_FALSE(validation["valid"].toBool());
    ASSERT_FALSE(validation["problems"].toArray().isEmpty()) << run.out.toStdString();
    EXPECT_EQ(validation["problems"].toArray().at(0).toObject()["line"].toInt(), 7) << run.out.toStdString();
}

// R[ADDRESS] reads four bytes in the description's byte order, R[ADDRESS:LENGTH] any length; a write shows
// in the features that lie there.
TEST(CameraParametersTool, RegistersByAddress) {
    SRun run = runTool({"describe", "Width"});
    EXPECT_TRUE(run.out.contains("address: 0x0108\n")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("length: 4\n"));
    run = runTool({"--json", "get", "R[0x0108]", "R[0x0108:2]"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QList<QJsonObject> reads = jsonLines(run.out);
    ASSERT_EQ(reads.size(), 2);
    EXPECT_EQ(reads[0]["value"].toDouble(), 640);  // little-endian, as the simulated camera declares
    EXPECT_EQ(reads[0]["bytes"].toString(), "80 02 00 00");
    EXPECT_EQ(reads[1]["length"].toInt(), 2);
    EXPECT_EQ(reads[1]["text"].toString(), "0x0280");

    run = runShell({"set R[0x108]=0x400", "get Width"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QRegularExpression("@CameraDevice/Width +Integer +RW +Beginner +1024 px")))
        << run.out.toStdString();
    run = runTool({"--device", "aravis:fake", "get", "R[0x100]"});  // Aravis' fake camera is big-endian
    EXPECT_TRUE(run.out.contains("bytes: 00 00 02 00")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("value: 0x00000200")) << run.out.toStdString();

    run = runTool({"get", "R[0x108:0]"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains("1 to 4096 bytes")) << run.err.toStdString();
    run = runTool({"set", "R[0x108]=lots"});
    EXPECT_EQ(run.exitCode, 4);
    run = runTool({"get", "R[0xZZ]"});
    EXPECT_EQ(run.exitCode, 3);  // no register form: an unknown feature
}

// file:DESCRIPTION opens a description over registers in memory: its features can be browsed and written,
// each register keeping what was written to it.
TEST(CameraParametersTool, ADescriptionFileIsBrowsedWithoutItsCamera) {
    QTemporaryDir folder;
    const QString path = writeDescription(folder.filePath("camera.xml"), R"(
<Category Name="Root"><pFeature>Width</pFeature><pFeature>Area</pFeature></Category>
<Integer Name="Width"><pValue>WidthReg</pValue><Min>16</Min><Max>4096</Max><Inc>16</Inc></Integer>
<IntReg Name="WidthReg"><Address>0x1000</Address><Length>4</Length><AccessMode>RW</AccessMode>
 <pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<IntSwissKnife Name="Area"><pVariable Name="W">Width</pVariable><Formula>W*W</Formula></IntSwissKnife>
<Port Name="Device"/>
)");
    const QString device = "file:" + path;
    SRun run = runShell({"get Width", "set Width=640", "get Area R[0x1000]"}, {"--device", device});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QRegularExpression("@CameraDevice/Width +Integer +RW +\\S+ +0\n")))
        << run.out.toStdString();
    EXPECT_TRUE(run.out.contains(QRegularExpression("@CameraDevice/Area +Integer +RO +\\S+ +409600")))
        << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("bytes: 00 00 02 80")) << run.out.toStdString();
    run = runTool({"--device", "file:" + folder.filePath("missing.xml"), "list"});
    EXPECT_EQ(run.exitCode, 6);
    EXPECT_TRUE(run.err.contains("missing.xml")) << run.err.toStdString();
}
