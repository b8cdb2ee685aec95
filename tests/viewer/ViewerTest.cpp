// The viewer on the simulated camera, on a real (virtual) display: the tree, editing through the editors,
// refusals, values and access that follow the device, details, settings, and a screenshot.
#include "../FakeGigECamera.h"
#include "DeviceFilesDialog.h"
#include "ViewerWindow.h"
#include <QAction>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>
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
#include <parametercollection/ICommandParameter.h>
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

// Types a value into an editor the way a user does: select all, type, press Enter.
void typeInto(QLineEdit* line, const QString& text) {
    line->setFocus();
    line->selectAll();
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
}

QLineEdit* lineEditor(CViewerWindow& window, const QString& name) {
    return qobject_cast<QLineEdit*>(window.tree().row(name)->editor());
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
    QLineEdit* width = lineEditor(window, "Width");
    ASSERT_NE(width, nullptr);
    typeInto(width, "1024");
    EXPECT_EQ(deviceWidth(), 1024);

    // Above the maximum: every keystroke is kept, nothing reaches the device, the refusal is named and the
    // editor shows the device's value again.
    typeInto(width, "4000");
    EXPECT_EQ(deviceWidth(), 1024);
    EXPECT_EQ(width->text(), "1024");
    EXPECT_TRUE(window.statusBar()->currentMessage().startsWith("Width: 4000 is outside 16 to "))
        << window.statusBar()->currentMessage().toStdString();
    // Off the increment, and no number at all.
    typeInto(width, "1000");
    EXPECT_EQ(deviceWidth(), 1024);
    EXPECT_TRUE(window.statusBar()->currentMessage().contains("multiple of 16"));
    typeInto(width, "12a");
    EXPECT_EQ(deviceWidth(), 1024);
    EXPECT_EQ(width->text(), "1024");
    // A value the device takes replaces the refusal in the status bar.
    typeInto(width, "0x200");
    EXPECT_EQ(deviceWidth(), 512);
    EXPECT_FALSE(window.statusBar()->currentMessage().contains("outside"));

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
    QLineEdit* width = lineEditor(window, "Width");
    EXPECT_TRUE(eventually([&] { return width->text() == "512"; }));

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

// While the camera acquires, its chunk and event features show each frame's and each event's values.
TEST_F(ViewerTest, ChunkAndEventFeaturesFollowTheAcquisition) {
    window.findChild<QComboBox*>("visibility")->setCurrentText("Guru");
    ASSERT_NE(window.liveAcquisition(), nullptr);
    ASSERT_TRUE(window.liveAcquisition()->following());
    auto set = [&](const char* name, const char* value) {
        window.collection().get(ParameterName(QString("@CameraDevice/") + name))->parseAndSetValue(value);
    };
    set("ChunkModeActive", "1");
    set("EventSelector", "ExposureEnd");
    set("EventNotification", "On");
    window.collection().get(CommandParameterName("@CameraDevice/AcquisitionStart"))->execute(true);

    // The rows move on with the frames, without the user doing anything.
    ASSERT_TRUE(eventually([&] { return !rowValue(window, "ChunkFrameID").isEmpty(); }));
    const QString frame = rowValue(window, "ChunkFrameID");
    EXPECT_TRUE(eventually([&] { return rowValue(window, "ChunkFrameID").toInt() > frame.toInt() + 2; }))
        << rowValue(window, "ChunkFrameID").toStdString();
    EXPECT_EQ(rowValue(window, "ChunkWidth").toLongLong(), deviceWidth());
    ASSERT_TRUE(eventually([&] { return !rowValue(window, "EventExposureEndFrameID").isEmpty(); }));
    const QString event = rowValue(window, "EventExposureEndFrameID");
    EXPECT_TRUE(eventually([&] { return rowValue(window, "EventExposureEndFrameID") != event; }));
    window.collection().get(CommandParameterName("@CameraDevice/AcquisitionStop"))->execute(true);
    EXPECT_GT(window.liveAcquisition()->frames(), 3u);
    EXPECT_GT(window.liveAcquisition()->events(), 0u);
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
    QLineEdit* width = lineEditor(window, "Width");
    EXPECT_TRUE(eventually([&] { return width->text() == "800"; }));
    // The details of the current feature follow its value.
    EXPECT_TRUE(eventually([&] { return window.detailsText().contains("value\n800\n"); }))
        << window.detailsText().toStdString();
    EXPECT_FALSE(window.loadSettings(folder.filePath("missing.txt"), report));
    EXPECT_TRUE(report.contains("missing.txt"));

    window.findChild<QComboBox*>("visibility")->setCurrentText("Expert");
    QTest::qWait(300);
    EXPECT_TRUE(window.grab().save(VIEWER_SCREENSHOT));
}

// The viewer shows values as the tool prints them: the feature's representation and precision, the unit
// beside them, and nothing where a value cannot be read.
TEST_F(ViewerTest, ValuesShowAsTheToolShowsThem) {
    window.findChild<QComboBox*>("visibility")->setCurrentText("Guru");
    for (const char* name : {"TestHexInteger", "GevCurrentIPAddress", "GevMACAddress", "Gain"}) {
        CFeatureRow* row = window.tree().row(name);
        ASSERT_NE(row, nullptr) << name;
        QLineEdit* line = qobject_cast<QLineEdit*>(row->editor());
        ASSERT_NE(line, nullptr) << name;
        EXPECT_EQ(line->text(), row->parameter().toString()) << name;
    }
    // The temperature drifts while the test runs: its text has the feature's one decimal.
    EXPECT_TRUE(QRegularExpression("^[0-9]+\\.[0-9]$")
                    .match(lineEditor(window, "DeviceTemperature")->text())
                    .hasMatch())
        << lineEditor(window, "DeviceTemperature")->text().toStdString();
    EXPECT_TRUE(lineEditor(window, "TestHexInteger")->text().startsWith("0x"));
    EXPECT_EQ(lineEditor(window, "GevCurrentIPAddress")->text(), "192.168.1.42");
    EXPECT_EQ(window.tree().row("DeviceTemperature")->item()->text(CFeatureRow::UnitColumn), "C");
    // Written in the form it is shown in.
    typeInto(lineEditor(window, "GevPersistentIPAddress"), "10.0.0.7");
    EXPECT_EQ(
        window.collection().get(IntegerParameterName("@CameraDevice/GevPersistentIPAddress"))->getValue(),
        (10LL << 24) + 7);
    // Write-only and not available: blank, not 0.
    for (const char* name : {"TestWriteOnlyInteger", "AcquisitionFrameCount"}) {
        ASSERT_NE(window.tree().row(name), nullptr) << name;
        EXPECT_TRUE(lineEditor(window, name)->text().isEmpty()) << name;
        EXPECT_TRUE(window.tree()
                        .row(name)
                        ->item()
                        ->data(CFeatureRow::ValueColumn, Qt::UserRole)
                        .toString()
                        .isEmpty());
    }
    // The display name is shown, the feature's name and tooltip are at hand.
    EXPECT_TRUE(
        window.tree().row("Width")->item()->toolTip(CFeatureRow::NameColumn).contains("Width of the image"));
}

// A command that resets the device asks first; declined, nothing happens.
TEST_F(ViewerTest, ResetCommandsAskFirst) {
    window.findChild<QComboBox*>("visibility")->setCurrentText("Guru");
    QStringList asked;
    bool answer = false;
    CFeatureRow::confirmCommand = [&](QWidget*, const QString& command) {
        asked.append(command);
        return answer;
    };
    auto reset = qobject_cast<QPushButton*>(window.tree().row("DeviceReset")->editor());
    ASSERT_NE(reset, nullptr);
    window.statusBar()->clearMessage();
    QTest::mouseClick(reset, Qt::LeftButton);
    EXPECT_EQ(asked, QStringList{"DeviceReset"});
    EXPECT_TRUE(window.statusBar()->currentMessage().isEmpty()) << "declined, yet executed";
    answer = true;
    QTest::mouseClick(reset, Qt::LeftButton);
    EXPECT_TRUE(window.statusBar()->currentMessage().startsWith("DeviceReset:"))
        << window.statusBar()->currentMessage().toStdString();
    // Other commands run on one click.
    asked.clear();
    QTest::mouseClick(qobject_cast<QPushButton*>(window.tree().row("AcquisitionStart")->editor()),
                      Qt::LeftButton);
    EXPECT_TRUE(asked.isEmpty());
    CFeatureRow::confirmCommand = nullptr;
}

// Another device is opened from the window; one that cannot be opened leaves the window as it was.
TEST_F(ViewerTest, TheDevicePickerOpensAnotherDevice) {
    QString problem;
    EXPECT_FALSE(window.openDevice("nonsense", problem));
    EXPECT_TRUE(problem.contains("nonsense")) << problem.toStdString();
    EXPECT_EQ(lineEditor(window, "Width")->text(), "640");
    ASSERT_TRUE(window.openDevice("aravis:fake", problem)) << problem.toStdString();
    EXPECT_TRUE(window.windowTitle().endsWith("aravis:fake"));
    EXPECT_EQ(lineEditor(window, "Width")->text(), "512");
    EXPECT_EQ(window.connectionState(), "Connected");
    EXPECT_EQ(window.findChild<QComboBox*>("device")->currentText(), "aravis:fake");
}

// The GigE Vision camera goes away under the window: the window stays, says the device is lost and greys
// its features out; once the camera is back, Reconnect shows it again.
TEST(ViewerLostDevice, TheWindowStaysAndReconnects) {
    if (QStandardPaths::findExecutable(CFakeGigECamera::program).isEmpty())
        GTEST_SKIP() << CFakeGigECamera::program << " is not installed";
    CFakeGigECamera camera;
    ASSERT_TRUE(camera.start());
    QThread::msleep(1500);
    CViewerWindow window(QString("aravis:") + CFakeGigECamera::deviceId);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(window.connectionState(), "Connected");
    ASSERT_EQ(lineEditor(window, "Width")->text(), "512");

    camera.stop();
    typeInto(lineEditor(window, "Width"), "256");
    EXPECT_TRUE(eventually([&] { return window.connectionState() == "Lost"; }, 15000));
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.tree().isEnabled());
    EXPECT_TRUE(window.findChild<QAction*>("reconnect")->isEnabled());
    EXPECT_TRUE(window.findChild<QLabel*>("connectionState")->text().startsWith("Lost"));
    QTest::qWait(300);
    EXPECT_TRUE(window.grab().save(VIEWER_LOST_SCREENSHOT));

    ASSERT_TRUE(camera.start());
    QThread::msleep(1500);
    QString problem;
    ASSERT_TRUE(window.reconnect(problem)) << problem.toStdString();
    EXPECT_EQ(window.connectionState(), "Connected");
    EXPECT_TRUE(window.tree().isEnabled());
    EXPECT_EQ(lineEditor(window, "Width")->text(), "512");
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
