// Device files of the simulated camera as parameters: availability, probes, chunked text, streams.
#include "LibraryFixture.h"
#include <parametercollection/FileParameter.h>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>

using namespace Core::Exception;
using SimCamera::CSimulatedFiles;

namespace {

class FileParameterTest : public LibraryTest {
protected:
    QSharedPointer<CFileParameter> file(const QString& name) {
        QSharedPointer<CFileParameter> created(
            new CFileParameter(name, "@CameraDevice", sharedState(), decoupler()));
        created->attach(map());
        return created;
    }
};

}  // namespace

TEST_F(FileParameterTest, AvailabilityFollowsTheFileSelectorEntries) {
    auto userSet = file("UserSet1");
    EXPECT_TRUE(userSet->isAvailable());
    EXPECT_TRUE(userSet->isImplemented());
    EXPECT_TRUE(userSet->isEmpty());  // the inversion: an available file counts as empty
    EXPECT_TRUE(userSet->isReadable());
    EXPECT_TRUE(userSet->isWriteable());

    auto firmware = file("Firmware");  // listed, but its entry is NA
    EXPECT_FALSE(firmware->isAvailable());
    EXPECT_FALSE(firmware->isEmpty());
    EXPECT_FALSE(firmware->isReadable());
    // A file the device does not offer is no error for the state queries, on any GenApi; reading it is:
    // GenApi's adapter refuses the name, and the error arrives translated.
    auto missing = file("NoSuchFile");
    EXPECT_FALSE(missing->isAvailable());
    EXPECT_FALSE(missing->isReadable());
    EXPECT_FALSE(missing->isWriteable());
    EXPECT_FALSE(firmware->isWriteable());
    char byte = 0;
    EXPECT_THROW(missing->read(&byte, 1), ArgumentException);
    EXPECT_THROW(firmware->read(&byte, 1), InvalidOperationException);

    EXPECT_FALSE(userSet->attach(nullptr));
    EXPECT_FALSE(userSet->isAvailable());
    EXPECT_TRUE(userSet->attach(map()));
}

TEST_F(FileParameterTest, ContentAsTextInChunks) {
    auto userSet = file("UserSet1");
    userSet->parseAndSetValue("hello\nworld");
    EXPECT_EQ(camera().fileContent(CSimulatedFiles::UserSet1), "hello\nworld");
    EXPECT_EQ(userSet->toString(), "hello\nworld");

    // 300 bytes arrive as a chunk of 256 and one of 44.
    const std::string long300 = std::string(256, 'a') + std::string(44, 'b');
    camera().setFileContent(CSimulatedFiles::UserSet2, long300);
    auto other = file("UserSet2");
    char buffer[512];
    EXPECT_EQ(other->read(buffer, 256), 256);
    EXPECT_EQ(other->read(buffer, 256), 44);
    EXPECT_EQ(std::string(buffer, 44), std::string(44, 'b'));
    EXPECT_EQ(other->read(buffer, 256), 0);
    other->close();
    EXPECT_EQ(other->toString(), QString::fromStdString(long300));

    // The read stream stays open at the end of the file until closed: a second text is empty.
    EXPECT_EQ(other->toString(), "");
    other->close();

    camera().setFileContent(CSimulatedFiles::UserSet2, "");
    EXPECT_EQ(other->toString(), "");
    other->close();
    // A zero byte ends its chunk's text.
    camera().setFileContent(CSimulatedFiles::UserSet2, std::string("abc\0def", 7));
    EXPECT_EQ(other->toString(), "abc");
    other->close();
}

TEST_F(FileParameterTest, ProbesNeverDisturbAnOpenStream) {
    auto userSet = file("UserSet1");
    char first[] = "first ";
    ASSERT_TRUE(userSet->write(first, 6));
    EXPECT_FALSE(userSet->isReadable());  // a write is in progress
    EXPECT_TRUE(userSet->isWriteable());
    char second[] = "second";
    ASSERT_TRUE(userSet->write(second, 6));
    userSet->close();
    EXPECT_EQ(camera().fileContent(CSimulatedFiles::UserSet1), "first second");

    // A read in progress: readable, not writable, and reading goes on where it was.
    char two[2];
    EXPECT_EQ(userSet->read(two, 2), 2);
    EXPECT_TRUE(userSet->isReadable());
    EXPECT_FALSE(userSet->isWriteable());
    char rest[32];
    EXPECT_EQ(userSet->read(rest, 32), 10);
    userSet->close();

    EXPECT_EQ(messageOf<RuntimeException>([&] { userSet->read(rest, (1LL << 40)); }), "INTEGRAL_CAST failed");
    userSet->close();
}

TEST_F(FileParameterTest, AMegabyteArrivesIdentical) {
    QByteArray content(1 << 20, '\0');
    for (int i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>((i * 131) ^ (i >> 9));
    auto userSet = file("UserSet2");
    ASSERT_TRUE(userSet->write(content.data(), content.size()));
    userSet->close();
    EXPECT_EQ(camera().fileContent(CSimulatedFiles::UserSet2).size(), content.size());
    QByteArray back;
    QByteArray chunk(65536, '\0');
    for (long long count; (count = userSet->read(chunk.data(), chunk.size())) > 0;)
        back.append(chunk.constData(), static_cast<int>(count));
    userSet->close();
    EXPECT_EQ(back, content);
}

TEST_F(FileParameterTest, DeviceFailuresAreTranslatedAndTheFileWorksAgain) {
    auto log = file("DeviceLog");
    camera().setFileContent(CSimulatedFiles::DeviceLog, "log line\n");
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::IoError);
    EXPECT_THROW(log->toString(), BaseException);
    log->close();
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    EXPECT_EQ(log->toString(), "log line\n");
}

// A device that fails in the middle of a transfer: the error arrives translated instead of a count of 0
// or a plain false, and the next transfer starts the file afresh.
TEST_F(FileParameterTest, DeviceErrorsInTheMiddleOfATransferReachTheCaller) {
    const std::string content = std::string(256, 'a') + std::string(256, 'b') + std::string(88, 'c');
    camera().setFileContent(CSimulatedFiles::DeviceLog, content);
    auto log = file("DeviceLog");
    char buffer[256];
    ASSERT_EQ(log->read(buffer, 256), 256);
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::IoError);
    EXPECT_THROW(log->read(buffer, 256), RuntimeException);
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    ASSERT_EQ(log->read(buffer, 256), 256);
    EXPECT_EQ(std::string(buffer, 256), std::string(256, 'a'));
    log->close();
    // The text of a file that fails part way is an error, not the part that arrived.
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::Timeout);
    EXPECT_THROW(log->toString(), TimeoutException);
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    EXPECT_EQ(log->toString().toStdString(), content);
    log->close();

    auto userSet = file("UserSet2");
    QByteArray chunk(300, 'w');
    ASSERT_TRUE(userSet->write(chunk.data(), chunk.size()));  // one buffer of 256 went to the device
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::IoError);
    EXPECT_THROW(userSet->write(chunk.data(), chunk.size()), RuntimeException);
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    userSet->parseAndSetValue("again");
    EXPECT_EQ(camera().fileContent(CSimulatedFiles::UserSet2), "again");
}

// Detaching must succeed for a device that cannot close the open stream any more: the parameter lets go
// of the map its owner is about to free, and reports the failed close.
TEST_F(FileParameterTest, AttachKeepsTheNewMapWhenClosingTheOldStreamFails) {
    camera().setFileContent(CSimulatedFiles::DeviceLog, std::string(600, 'L'));
    auto log = file("DeviceLog");
    char buffer[16];
    ASSERT_EQ(log->read(buffer, sizeof buffer), 16);
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::IoError);
    EXPECT_THROW(log->attach(nullptr), BaseException);
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    EXPECT_FALSE(log->isAvailable());
    EXPECT_FALSE(log->isReadable());
    EXPECT_TRUE(log->attach(map()));
    EXPECT_EQ(log->read(buffer, sizeof buffer), 16);
    log->close();
}

TEST_F(FileParameterTest, ACharacterAcrossTwoChunksStaysOneCharacter) {
    const QString text = QString(255, 'a') + QString::fromUtf8("\xc3\xa9") + "z";  // é: bytes 256 and 257
    camera().setFileContent(CSimulatedFiles::UserSet1, text.toStdString());
    auto userSet = file("UserSet1");
    EXPECT_EQ(userSet->toString(), text);
    userSet->close();
}

TEST(FileParameterCollection, FilesThroughTheCollectionSurviveDetachAndAttach) {
    CSimulatedCollection simulated;
    CParameterCollection& collection = simulated.collection();
    SimCamera::CSimulatedDevice& device = simulated.device();

    auto userSet = collection.get(FileParameterName("@CameraDevice/UserSet1"));
    ASSERT_TRUE(userSet);
    EXPECT_EQ(userSet.data(), collection.get(FileParameterName("@CameraDevice/UserSet1")).data());
    EXPECT_TRUE(collection.contains(FileParameterName("@CameraDevice/UserSet1")));
    EXPECT_FALSE(collection.contains(FileParameterName("@CameraDevice/Firmware")));
    EXPECT_FALSE(collection.get(FileParameterName("@Unknown/UserSet1")));

    collection.detachNodeMap(ParameterPath::CameraDevice);
    EXPECT_FALSE(userSet->isAvailable());
    collection.attachNodeMap(ParameterPath::CameraDevice, device.nodeMap());
    EXPECT_TRUE(userSet->isAvailable());
    userSet->parseAndSetValue("kept");
    EXPECT_EQ(device.camera().fileContent(CSimulatedFiles::UserSet1), "kept");
}
