// The viewer on the simulated camera, on a real (virtual) display: the tree, editing through the editors,
// refusals, values and access that follow the device, details, settings, and a screenshot.
#include "DeviceFilesDialog.h"
#include "ViewerWindow.h"
#include <QFile>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <parametercollection/IEnumParameter.h>
#include <parametercollection/IIntegerParameter.h>

using namespace ParameterCollection;

// Readable failure messages for Qt's strings.
void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
void PrintTo(const QStringList& list, std::ostream* out) {
    *out << '[' << list.join(", ").toStdString() << ']';
}

namespace {

// Lets the event loop run until the condition holds or the time is up.
bool eventually(const std::function<bool()>& condition, int timeoutMs = 5000) {
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > timeoutMs)
            return false;
        QTest::qWait(20);
    }
    return true;
}

// Types a value into a spin box the way a user does: select all, type, press Enter.
void typeInto(QAbstractSpinBox* spin, const QString& text) {
    spin->setFocus();
    spin->selectAll();
    QTest::keyClicks(spin, text);
    QTest::keyClick(spin, Qt::Key_Return);
}

QString rowValue(CViewerWindow& window, const QString& name) {
    return window.tree().row(name)->item()->data(CFeatureRow::ValueColumn, Qt::UserRole).toString();
}

}  // namespace

class ViewerTest : public ::testing::Test {
protected:
    ViewerTest() : window("sim") {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    long long deviceWidth() {
        return window.collection().get(IntegerParameterName("@CameraDevice/Width"))->getValue();
    }
    CViewerWindow window;
};

TEST_F(ViewerTest, TreeVisibilityAndFilterShowTheCamerasFeatures) {
    const QStringList beginner = window.tree().shownFeatures();
    for (const char* name : {"Width", "Height", "ExposureTime", "PixelFormat", "AcquisitionStart"})
        EXPECT_TRUE(beginner.contains(name)) << name;
    EXPECT_FALSE(beginner.contains("DeviceTemperature"));  // Expert
    EXPECT_FALSE(beginner.contains("TLParamsLocked"));     // Invisible

    window.findChild<QComboBox*>("visibility")->setCurrentText("Guru");
    const QStringList guru = window.tree().shownFeatures();
    EXPECT_TRUE(guru.contains("DeviceTemperature"));
    EXPECT_TRUE(guru.contains("FileSelector"));
    EXPECT_GT(guru.size(), beginner.size());

    QTest::keyClicks(window.findChild<QLineEdit*>("filter"), "offset");
    EXPECT_EQ(window.tree().shownFeatures(), QStringList({"FileAccessOffset", "OffsetX", "OffsetY"}));
    window.findChild<QComboBox*>("visibility")->setCurrentText("Beginner");
    EXPECT_EQ(window.tree().shownFeatures(), QStringList({"OffsetX", "OffsetY"}));
}

TEST_F(ViewerTest, EditorsWriteToTheDeviceAndARefusalRestoresTheDevicesValue) {
    auto width = qobject_cast<QSpinBox*>(window.tree().row("Width")->editor());
    ASSERT_NE(width, nullptr);
    EXPECT_EQ(width->minimum(), 16);
    EXPECT_EQ(width->singleStep(), 16);
    typeInto(width, "1024");
    EXPECT_EQ(deviceWidth(), 1024);

    // Off the increment: GenApi's message in the status bar, the editor back at the device's value.
    typeInto(width, "1000");
    EXPECT_EQ(deviceWidth(), 1024);
    EXPECT_EQ(width->value(), 1024);
    EXPECT_TRUE(window.statusBar()->currentMessage().startsWith("Width: "))
        << window.statusBar()->currentMessage().toStdString();

    auto format = qobject_cast<QComboBox*>(window.tree().row("PixelFormat")->editor());
    ASSERT_NE(format, nullptr);
    const int mono16 = format->findData("Mono16");
    ASSERT_GE(mono16, 0);
    format->setCurrentIndex(mono16);
    emit format->activated(mono16);
    EXPECT_EQ(window.collection().get(EnumParameterName("@CameraDevice/PixelFormat"))->getValue(), "Mono16");
}

TEST_F(ViewerTest, ValuesAndAccessFollowTheDeviceWithoutUserAction) {
    window.findChild<QComboBox*>("visibility")->setCurrentText("Expert");
    // Written behind the viewer's back: the row follows through the decoupled signal.
    window.collection().get(IntegerParameterName("@CameraDevice/Width"))->setValue(512, true);
    auto width = qobject_cast<QSpinBox*>(window.tree().row("Width")->editor());
    EXPECT_TRUE(eventually([&] { return width->value() == 512; }));

    // The polled temperature drifts by a tenth of a degree a second.
    const QString before = rowValue(window, "DeviceTemperature");
    EXPECT_FALSE(before.isEmpty());
    EXPECT_TRUE(eventually([&] { return rowValue(window, "DeviceTemperature") != before; }, 4000));

    // Locking the transport parameters greys the width's editor out, unlocking brings it back.
    auto locked = window.collection().get(IntegerParameterName("@CameraDevice/TLParamsLocked"));
    locked->setValue(1, true);
    EXPECT_TRUE(eventually([&] { return !width->isEnabled(); }));
    EXPECT_EQ(window.tree().row("Width")->item()->text(CFeatureRow::AccessColumn), "RO");
    locked->setValue(0, true);
    EXPECT_TRUE(eventually([&] { return width->isEnabled(); }));
}

TEST_F(ViewerTest, DetailsSettingsAndScreenshot) {
    window.tree().setCurrentItem(window.tree().row("Width")->item());
    const QString details = window.detailsText();
    for (const char* field : {"@CameraDevice/Width", "increment", "16", "px", "Linear"})
        EXPECT_TRUE(details.contains(field)) << field << " in\n" << details.toStdString();

    QTemporaryDir folder;
    QString report;
    window.collection().get(IntegerParameterName("@CameraDevice/Width"))->setValue(800, true);
    ASSERT_TRUE(window.saveSettings(folder.filePath("settings.txt"), report)) << report.toStdString();
    window.collection().get(IntegerParameterName("@CameraDevice/Width"))->setValue(320, true);
    ASSERT_TRUE(window.loadSettings(folder.filePath("settings.txt"), report)) << report.toStdString();
    EXPECT_EQ(deviceWidth(), 800);
    auto width = qobject_cast<QSpinBox*>(window.tree().row("Width")->editor());
    EXPECT_TRUE(eventually([&] { return width->value() == 800; }));
    // The details of the current feature follow its value.
    EXPECT_TRUE(eventually([&] { return window.detailsText().contains("value\n800\n"); }))
        << window.detailsText().toStdString();
    EXPECT_FALSE(window.loadSettings(folder.filePath("missing.txt"), report));
    EXPECT_TRUE(report.contains("missing.txt"));

    window.findChild<QComboBox*>("visibility")->setCurrentText("Expert");
    QTest::qWait(300);
    EXPECT_TRUE(window.grab().save(VIEWER_SCREENSHOT));
}

TEST_F(ViewerTest, DeviceFilesAreListedUploadedAndDownloaded) {
    CDeviceFilesDialog dialog(window.collection(), &window);
    dialog.show();
    auto list = dialog.findChild<QListWidget*>();
    ASSERT_NE(list, nullptr);
    QStringList names;
    for (int i = 0; i < list->count(); ++i)
        names.append(list->item(i)->data(Qt::UserRole).toString());
    EXPECT_TRUE(names.contains("UserSet1")) << names.join(", ").toStdString();

    QTemporaryDir folder;
    QByteArray bytes;
    for (int i = 0; i < 3000; ++i)
        bytes.append(static_cast<char>(i * 7));
    QFile source(folder.filePath("up.bin"));
    ASSERT_TRUE(source.open(QIODevice::WriteOnly));
    source.write(bytes);
    source.close();
    ASSERT_TRUE(dialog.upload("UserSet1", source.fileName()));
    // The viewer polling and following the device, and the dialog listing the files again, never probe
    // a file for writing, which would empty it.
    dialog.close();
    CDeviceFilesDialog again(window.collection(), &window);
    again.show();
    QTest::qWait(500);
    ASSERT_TRUE(again.download("UserSet1", folder.filePath("down.bin")));
    QFile back(folder.filePath("down.bin"));
    ASSERT_TRUE(back.open(QIODevice::ReadOnly));
    EXPECT_EQ(back.readAll(), bytes) << dialog.findChild<QPlainTextEdit*>()->toPlainText().toStdString();
    EXPECT_FALSE(dialog.download("NoSuchFile", folder.filePath("none.bin")));
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
