// The parameter-names generator on the simulated camera's description and on bad input.
#include <GenApi/GenApi.h>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <SimulatedDevice.h>
#include "ProcessRun.h"
#include <gtest/gtest.h>
#include <map>

namespace {

SRun generate(const QStringList& arguments) {
    return runProgram(PARAMETER_NAMES_TOOL, arguments);
}

QString writeFile(QTemporaryDir& folder, const QString& name, const QByteArray& content) {
    QFile file(folder.filePath(name));
    file.open(QIODevice::WriteOnly);
    file.write(content);
    return file.fileName();
}

}  // namespace

TEST(ParameterNamesTool, ListsTheFeaturesOfADescriptionByNameAndType) {
    const SRun run = generate({"list", SIMULATED_CAMERA_DESCRIPTION});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();

    // The same features, asked of the node map directly: visible features with a typed interface.
    SimCamera::CSimulatedDevice device;
    GenApi::NodeList_t nodes;
    device.nodeMap()->GetNodes(nodes);
    const std::map<GenApi::EInterfaceType, QString> types = {
        {GenApi::intfIInteger, "IInteger"},         {GenApi::intfIFloat, "IFloat"},
        {GenApi::intfIBoolean, "IBoolean"},         {GenApi::intfICommand, "ICommand"},
        {GenApi::intfIEnumeration, "IEnumeration"}, {GenApi::intfIString, "IString"}};
    QStringList expected;
    for (GenApi::INode* node : nodes) {
        const auto type = types.find(node->GetPrincipalInterfaceType());
        if (node->IsFeature() && type != types.end() && node->GetVisibility() != GenApi::Invisible)
            expected.append(QString::fromUtf8(node->GetName().c_str()) + "\t" + type->second);
    }
    std::sort(expected.begin(), expected.end(),
              [](const QString& a, const QString& b) { return a.toUtf8() < b.toUtf8(); });
    EXPECT_EQ(run.out.split('\n', Qt::SkipEmptyParts), expected);
    EXPECT_TRUE(run.out.contains("ExposureTime\tIFloat\n"));
    EXPECT_TRUE(run.out.contains("AcquisitionStart\tICommand\n"));
    EXPECT_FALSE(run.out.contains("WidthReg"));            // not a feature
    EXPECT_FALSE(run.out.contains("ImageFormatControl"));  // a category

    QTemporaryDir folder;
    const QString header = folder.filePath("SimCam.h");
    const SRun written = generate({"header", "--namespace", "SimCam", "--prefix", "@CameraDevice",
                                   SIMULATED_CAMERA_DESCRIPTION, "--output", header});
    ASSERT_EQ(written.exitCode, 0) << written.err.toStdString();
    QFile file(header);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(
        text.contains("PARAMETERCOLLECTION_CATALOGUE_NAME(SimCam, FloatParameterName, ExposureTime, "
                      "\"@CameraDevice/ExposureTime\")"));
}

TEST(ParameterNamesTool, BadInputNamesTheFileAndNodeAndWritesNothing) {
    QTemporaryDir folder;
    const QString output = folder.filePath("out.h");
    const QString notXml = writeFile(folder, "notes.xml", "this is not a camera description\n");
    SRun run =
        generate({"header", "--namespace", "N", "--prefix", "@CameraDevice", notXml, "--output", output});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(notXml)) << run.err.toStdString();
    EXPECT_FALSE(QFile::exists(output));

    QByteArray description = QByteArray::fromStdString(SimCamera::CSimulatedCamera::description());
    const QString truncated = writeFile(folder, "truncated.xml", description.left(description.size() / 2));
    run = generate({"list", truncated, "--output", output});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(truncated));
    EXPECT_FALSE(QFile::exists(output));

    // A feature whose name is a C++ keyword cannot become a constant.
    description.replace("<Integer Name=\"Width\"", "<Integer Name=\"class\"");
    description.replace("<pFeature>Width</pFeature>", "<pFeature>class</pFeature>");
    const QString keyword = writeFile(folder, "keyword.xml", description);
    run = generate({"list", keyword, "--output", output});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("node 'class'")) << run.err.toStdString();
    EXPECT_FALSE(QFile::exists(output));

    run = generate({"header", SIMULATED_CAMERA_DESCRIPTION});
    EXPECT_EQ(run.exitCode, 1);  // no namespace or prefix
    run = generate({"frobnicate"});
    EXPECT_EQ(run.exitCode, 2);

    // Help is asked for, not refused; a missing value and a namespace C++ cannot take are usage errors,
    // and nothing is written for them.
    run = generate({"--help"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains("header --namespace NS --prefix @NodeMap")) << run.out.toStdString();
    run = generate({"list", SIMULATED_CAMERA_DESCRIPTION, "--output"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains("--output needs a value"));
    for (const char* bad : {"My-Cam", "1Cam", "A::", "::A", "A:::B", "", "class", "Vendor::namespace"}) {
        run = generate({"header", "--namespace", bad, "--prefix", "@CameraDevice",
                        SIMULATED_CAMERA_DESCRIPTION, "--output", output});
        EXPECT_EQ(run.exitCode, 2) << bad;
        EXPECT_TRUE(run.err.contains("is not a C++ namespace name")) << bad;
        EXPECT_FALSE(QFile::exists(output)) << bad;
    }
    run = generate({"header", "--namespace", "Vendor::My_Cam2", "--prefix", "@CameraDevice",
                    SIMULATED_CAMERA_DESCRIPTION, "--output", output});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(QFile::exists(output));
}
