// Runs the camera-parameters program on the simulated camera and checks its output and exit codes.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>
#include <QTemporaryDir>
#include <QCoreApplication>
#include <QStandardPaths>
#include <QThread>
#include <QFile>
#include "ToolTestSupport.h"
#include <functional>
#include <gtest/gtest.h>

TEST(CameraParametersTool, ListsGetsAndSetsOnTheSimulatedCamera) {
    SRun run = runTool({"list"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QRegularExpression("@CameraDevice/Width +Integer +RW +Beginner +640 px")));
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
    EXPECT_EQ(written["value"].toDouble(), 1024);  // a number, with the text beside it
    EXPECT_EQ(written["text"].toString(), "1024");
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
    // A usage error names what is wrong in a line and points to the help, not the whole help.
    run = runTool({"frobnicate"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.startsWith("Unknown command 'frobnicate'.")) << run.err.toStdString();
    EXPECT_FALSE(run.err.contains("Usage:"));
    EXPECT_LE(run.err.count('\n'), 2);
    run = runTool({"set", "Width"});
    EXPECT_EQ(run.exitCode, 2);

    // Several writes go in order in one session, each shown, up to the first refusal.
    run = runTool({"set", "GainSelector=Blue", "Gain=7.5", "Width=1024", "Width=1000", "Height=480"});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_TRUE(run.out.contains(QRegularExpression("@CameraDevice/GainSelector .*Blue")));
    EXPECT_TRUE(run.out.contains(QRegularExpression("@CameraDevice/Gain .*7\\.5")));
    EXPECT_TRUE(run.out.contains(QRegularExpression("@CameraDevice/Width .*1024")));
    EXPECT_FALSE(run.out.contains("Height"));
    EXPECT_TRUE(run.err.contains("Value '1000' refused"));
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
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
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
    const QString path = writeDescription(folder.filePath("broken.xml"), R"(  <Integer Name="A">
    <pValue>B</pValue>
    <ImposedAccessMode>RO</ImposedAccessMode>
  </Integer>
  <Integer Name="B"><pValue>A</pValue></Integer>
)");
    run = runTool({"validate", path});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.contains(path + ":8: ")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("read cycle detected : A -> B -> A")) << run.out.toStdString();

    // What the schema cannot see: a pointer to a missing node, a formula over a name the node does not
    // declare, an unbalanced formula; each with its line. Numbers, GenICam's functions and a converter's
    // FROM and TO are no names to declare.
    const QString links = writeDescription(
        folder.filePath("links.xml"),
        R"(  <Category Name="Root"><pFeature>Width</pFeature><pFeature>Missing</pFeature></Category>
  <Integer Name="Width"><Value>640</Value></Integer>
  <IntSwissKnife Name="Twice"><pVariable Name="W">Width</pVariable><Formula>2*W + H</Formula></IntSwissKnife>
  <IntSwissKnife Name="Open"><pVariable Name="W">Width</pVariable><Formula>(W + 0x1F</Formula></IntSwissKnife>
  <Converter Name="Scaled"><pVariable Name="W">Width</pVariable><FormulaTo>FROM*W*1.5e-3</FormulaTo>
    <FormulaFrom>TO/W + SQRT(4) + PI</FormulaFrom><pValue>Width</pValue><Slope>Increasing</Slope></Converter>
)");
    run = runTool({"validate", links});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.contains(links + ":6: pFeature names 'Missing'")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains(links + ":8: The Formula of 'Twice' uses 'H'")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains(links + ":9: The Formula of 'Open' leaves a parenthesis open"));
    EXPECT_FALSE(run.out.contains("Scaled")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("3 missing node(s) or formula error(s)"));

    run = runTool({"validate", folder.filePath("missing.xml")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Cannot read"));
    run = runTool({"validate"});
    EXPECT_EQ(run.exitCode, 2);
}

TEST(CameraParametersTool, TreeDescribeGenicamExecuteAndHelp) {
    SRun run = runTool({"tree"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.startsWith("Root\n  DeviceControl\n"));
    EXPECT_TRUE(run.out.contains(QRegularExpression("\n    Width +Integer +RW +640\n")));
    EXPECT_FALSE(run.out.contains("WidthReg"));
    // The tree follows categories only: PayloadSize's formula inputs are no branch of it.
    EXPECT_TRUE(run.out.contains(QRegularExpression("\n    PayloadSize [^\n]*\n  AcquisitionControl\n")))
        << run.out.toStdString();
    run = runTool({"tree", "ImageFormatControl", "--visibility", "Beginner"});
    EXPECT_TRUE(run.out.startsWith("ImageFormatControl\n"));
    EXPECT_FALSE(run.out.contains("PayloadSize"));  // an Expert feature
    // As JSON: one object, in the terms of list (full names, type names, values as numbers), children on
    // categories and only there.
    run = runTool({"--json", "tree", "--visibility", "Beginner"});
    EXPECT_EQ(run.out.count('\n'), 1);
    const QJsonObject tree = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(tree["name"].toString(), "@CameraDevice/Root");
    EXPECT_FALSE(tree["children"].toArray().isEmpty());
    QStringList types;
    QJsonObject treeWidth;
    std::function<int(const QJsonObject&)> misplacedChildren = [&](const QJsonObject& node) {
        types.append(node["type"].toString());
        if (node["name"].toString() == "@CameraDevice/Width")
            treeWidth = node;
        int count = (node["type"].toString() == "Category") != node.contains("children");
        for (const QJsonValue& child : node["children"].toArray())
            count += misplacedChildren(child.toObject());
        return count;
    };
    EXPECT_EQ(misplacedChildren(tree), 0);
    EXPECT_TRUE(types.contains("Integer") && types.contains("Enumeration"));
    EXPECT_FALSE(types.contains("IInteger"));
    EXPECT_EQ(treeWidth["value"].toDouble(), 640);
    EXPECT_FALSE(run.out.contains("PayloadSize"));  // an Expert feature
    run = runTool({"tree", "NoSuchCategory"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.err.contains("NoSuchCategory"));

    run = runTool({"--json", "describe", "Width"});
    const QJsonObject width = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(width["max"].toDouble(), 2048);
    EXPECT_EQ(width["increment"].toDouble(), 16);
    EXPECT_EQ(width["unit"].toString(), "px");
    EXPECT_EQ(width["access"].toString(), "RW");
    // 64-bit limits print exactly, as numbers in JSON (which a double would round to ...776000).
    run = runTool({"describe", "PayloadSize"});
    EXPECT_TRUE(run.out.contains("max: 9223372036854775807\n")) << run.out.toStdString();
    run = runTool({"--json", "describe", "PayloadSize"});
    EXPECT_TRUE(run.out.contains("\"max\":9223372036854775807")) << run.out.toStdString();
    EXPECT_TRUE(QJsonDocument::fromJson(run.out.toUtf8()).object()["max"].isDouble());
    run = runTool({"--json", "describe", "GainSelector"});
    const QJsonObject selector = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(selector["selectedFeatures"].toArray().size(), 2);
    EXPECT_FALSE(selector["entries"].toArray().isEmpty());
    run = runTool({"describe", "NoSuchFeature"});
    EXPECT_EQ(run.exitCode, 3);

    run = runTool({"genicam"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains("ModelName=\"SimCam1\""));
    run = runTool({"genicam", "--device", "nowhere"});
    EXPECT_EQ(run.exitCode, 2);

    run = runTool({"execute", "TimestampLatch"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains("@CameraDevice/TimestampLatch done"));
    run = runTool({"execute", "Width"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains("is no command"));
    run = runTool({"execute"});
    EXPECT_EQ(run.exitCode, 2);

    for (const char* help : {"-h", "help", "--help"}) {
        run = runTool({help});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_TRUE(run.out.startsWith("Usage: camera-parameters")) << help;
    }
}

TEST(CameraParametersTool, ShellKeepsTheDeviceOpenAndCompletesNames) {
    if (QStandardPaths::findExecutable("tmux").isEmpty())
        GTEST_SKIP() << "tmux is not installed";
    const QString session = QString("camera-parameters-test-%1").arg(QCoreApplication::applicationPid());
    tmux({"new-session", "-d", "-s", session, "-x", "160", "-y", "40",
          QString(CAMERA_PARAMETERS_TOOL) + " shell"});
    ASSERT_TRUE(paneShows(session, "camera-parameters>"))
        << tmux({"capture-pane", "-t", session, "-p"}).toStdString();
    tmux({"send-keys", "-t", session, "set Width 1024", "Enter"});
    ASSERT_TRUE(paneShows(session, "1024 px"));
    // Completion of a feature name, then the value written before, still there.
    tmux({"send-keys", "-t", session, "get OffsetY"});
    tmux({"send-keys", "-t", session, "-l", " "});
    tmux({"send-keys", "-t", session, "Wid", "Tab"});
    EXPECT_TRUE(paneShows(session, "get OffsetY Width"))
        << tmux({"capture-pane", "-t", session, "-p"}).toStdString();
    tmux({"send-keys", "-t", session, "Enter"});
    EXPECT_TRUE(paneShows(session, "@CameraDevice/Width"));
    tmux({"send-keys", "-t", session, "frobnicate", "Enter"});
    EXPECT_TRUE(paneShows(session, "Unknown command 'frobnicate'."));
    // Ctrl-C ends a watch, and the shell goes on.
    tmux({"send-keys", "-t", session, "watch OffsetX --seconds 60", "Enter"});
    EXPECT_TRUE(paneShows(session, "OffsetX = "));
    tmux({"send-keys", "-t", session, "C-c"});
    tmux({"send-keys", "-t", session, "get Height", "Enter"});
    EXPECT_TRUE(paneShows(session, "@CameraDevice/Height"))
        << tmux({"capture-pane", "-t", session, "-p"}).toStdString();
    tmux({"send-keys", "-t", session, "quit", "Enter"});
    bool ended = false;
    for (int attempt = 0; attempt < 100 && !ended; ++attempt) {
        QProcess probe;
        probe.start("tmux", {"has-session", "-t", session});
        probe.waitForFinished(5000);
        ended = probe.exitCode() != 0;
        if (!ended)
            QThread::msleep(50);
    }
    EXPECT_TRUE(ended) << "the shell did not end on quit";
    tmux({"kill-session", "-t", session});
}

// Commands piped into the shell give their own output only, no prompts (in JSON too), and the shell's
// exit code tells that one of them failed.
TEST(CameraParametersTool, APipedShellPrintsNoPromptsAndReportsFailures) {
    SRun run = runShell({"get Width", "get NoSuchFeature", "get Height"});
    EXPECT_EQ(run.exitCode, 3) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains("camera-parameters>")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("@CameraDevice/Width") && run.out.contains("@CameraDevice/Height"));
    run = runShell({"get Width", "get Height"}, {"--json"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList lines = run.out.trimmed().split('\n');
    EXPECT_EQ(lines.size(), 2) << run.out.toStdString();
    for (const QString& line : lines)
        EXPECT_TRUE(QJsonDocument::fromJson(line.toUtf8()).isObject()) << line.toStdString();
}

// A shell opened on another device than the default serves its commands from that device.
TEST(CameraParametersTool, AShellOnAnotherDeviceWorksOnIt) {
    const SRun run = runShell({"get Width", "set Width 512", "get Width", "get Width --device sim"},
                              {"--device", "aravis:fake"});
    EXPECT_EQ(run.exitCode, 2) << run.err.toStdString();  // the refused command's code
    EXPECT_TRUE(run.out.contains(QRegularExpression("@CameraDevice/Width +Integer +RW +Beginner +512")))
        << run.out.toStdString() << run.err.toStdString();
    EXPECT_EQ(run.err.count("The shell works on the device it opened"), 1) << run.err.toStdString();
}

TEST(CameraParametersTool, SavesLoadsAndMovesDeviceFiles) {
    QTemporaryDir folder;
    const QString settings = folder.filePath("settings.txt");
    const QString upload = folder.filePath("upload.bin");
    const QString download = folder.filePath("download.bin");
    QFile source(upload);
    ASSERT_TRUE(source.open(QIODevice::WriteOnly));
    QByteArray bytes;
    for (int i = 0; i < 3000; ++i)
        bytes.append(static_cast<char>(i * 7));
    source.write(bytes);
    source.close();

    // One device for the whole session: save, change, load, and the saved value is back. Listing files
    // and every feature between the upload and the download leaves the file as it was: nothing the
    // tool does on its own probes a file for writing, which would empty it.
    const SRun run =
        runShell({"set Width 1024", "save " + settings, "set Width 320", "load " + settings + " --verify",
                  "get Width", "file put UserSet1 " + upload, "files", "list --all --visibility Guru", "dump",
                  "tree", "describe FileSelector", "file get UserSet1 " + download, "files"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains("Saved ")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains(QRegularExpression("@CameraDevice/Width +Integer +RW +Beginner +1024 px")));
    EXPECT_TRUE(run.out.contains("Wrote 3000 bytes to UserSet1"));
    EXPECT_TRUE(run.out.contains(QRegularExpression("UserSet1 +3000  rw")));
    QFile received(download);
    ASSERT_TRUE(received.open(QIODevice::ReadOnly));
    EXPECT_EQ(received.readAll(), bytes);

    // Bad input: failing entries are named, unknown files and missing local files are refused.
    QFile bad(folder.filePath("bad.txt"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("# {05D8C294-F295-4dfb-9D01-096BD04049F4}\nWidth\t1000\nNoSuchFeature\t1\nHeight\t240\n");
    bad.close();
    SRun failed = runTool({"load", bad.fileName()});
    EXPECT_EQ(failed.exitCode, 4);
    EXPECT_TRUE(failed.err.contains("1 of 3 settings applied, 2 refused")) << failed.err.toStdString();
    EXPECT_TRUE(failed.err.contains(QRegularExpression("\n  Width[^\n]*\n  NoSuchFeature[^\n]*\n")))
        << failed.err.toStdString();
    // A device that marks nothing streamable saves nothing unless asked to.
    const QString nothing = folder.filePath("nothing.txt");
    failed = runTool({"--device", "aravis:fake", "save", nothing});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(failed.err.startsWith("Nothing to save")) << failed.err.toStdString();
    EXPECT_FALSE(QFile::exists(nothing));
    failed = runTool({"--device", "aravis:fake", "save", nothing, "--allow-empty"});
    EXPECT_EQ(failed.exitCode, 0);
    EXPECT_TRUE(failed.out.contains("Saved 0 settings")) << failed.out.toStdString();
    // A file that cannot be read or holds no settings is no refused value.
    QFile empty(folder.filePath("empty.txt"));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.close();
    for (const QString& unusable : {folder.filePath("missing.txt"), folder.path(), empty.fileName()}) {
        failed = runTool({"load", unusable});
        EXPECT_EQ(failed.exitCode, 7) << unusable.toStdString();
        EXPECT_TRUE(failed.err.startsWith("Cannot load '" + unusable + "': ")) << failed.err.toStdString();
    }
    failed = runTool({"file", "get", "NoSuchFile"});
    EXPECT_EQ(failed.exitCode, 3);
    failed = runTool({"file", "get", "Firmware"});  // listed, not available
    EXPECT_EQ(failed.exitCode, 5);
    EXPECT_TRUE(failed.err.contains("Device file 'Firmware' is listed but not available now."))
        << failed.err.toStdString();
    EXPECT_FALSE(failed.err.contains("Unknown device file"));
    // Aravis' fake camera has no file access: its list of files is empty, and that is no failure.
    const SRun none = runTool({"--device", "aravis:fake", "files"});
    EXPECT_EQ(none.exitCode, 0) << none.err.toStdString();
    EXPECT_TRUE(none.out.contains("The device has no files."));
    failed = runTool({"file", "put", "UserSet1", folder.filePath("missing.bin")});
    EXPECT_EQ(failed.exitCode, 1);
    failed = runTool({"file", "remove", "UserSet1"});
    EXPECT_EQ(failed.exitCode, 2);
}

// An unknown feature is named with the closest feature when it looks like a typing slip, in the form
// the user gave it, and with no guess otherwise.
TEST(CameraParametersTool, UnknownFeaturesSuggestTheClosestOne) {
    SRun run = runTool({"get", "Widht"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.err.contains("Unknown parameter 'Widht'. Did you mean 'Width'?"))
        << run.err.toStdString();
    run = runTool({"describe", "@CameraDevice/exposuretme"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.err.contains("Did you mean '@CameraDevice/ExposureTime'?")) << run.err.toStdString();
    run = runTool({"get", "Zzzzzzzzzz"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.err.contains("Unknown parameter 'Zzzzzzzzzz'."));
    EXPECT_FALSE(run.err.contains("Did you mean")) << run.err.toStdString();
}
