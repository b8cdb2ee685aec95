// Device files of the simulated camera through GenApi's file protocol adapter and device file streams.
#include "MemoryDescriptions.h"
#include "SimulatedCameraFixture.h"
#include <GenApi/GenApi.h>
#include <GenApi/Filestream.h>
#include <iterator>
#include <string>

using namespace GenApi;

namespace {

std::string readWholeFile(INodeMap* map, const char* name) {
    IDevFileStream stream(map, name);
    EXPECT_TRUE(stream.is_open()) << name;
    std::string content((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    stream.close();
    return content;
}

}  // namespace

TEST_F(SimulatedCameraTest, DeviceFilesWrittenAndReadThroughStreams) {
    // A text shorter than one buffer, then one that spans two buffers of 256 bytes.
    for (const std::string& text : {std::string("hello, camera"), std::string(300, 'x') + "end"}) {
        ODevFileStream out(map(), "UserSet1");
        ASSERT_TRUE(out.is_open());
        out << text;
        out.close();
        EXPECT_TRUE(out.good());
        EXPECT_EQ(camera().fileContent(SimCamera::CSimulatedFiles::UserSet1), text);
        EXPECT_EQ(readWholeFile(map(), "UserSet1"), text);
    }

    // An empty file reads as nothing and ends at once.
    camera().setFileContent(SimCamera::CSimulatedFiles::UserSet2, "");
    EXPECT_EQ(readWholeFile(map(), "UserSet2"), "");

    // The adapter alone: attach, open, chunked read, buffer size, close.
    FileProtocolAdapter adapter;
    ASSERT_TRUE(adapter.attach(map()));
    EXPECT_EQ(adapter.getBufSize("UserSet1", std::ios_base::in), 256);
    ASSERT_TRUE(adapter.openFile("UserSet1", std::ios_base::in));
    char chunk[8] = {};
    EXPECT_EQ(adapter.read(chunk, 300, 8, "UserSet1"), 3);
    EXPECT_EQ(std::string(chunk, 3), "end");
    EXPECT_EQ(adapter.read(chunk, 303, 8, "UserSet1"), 0);  // at the end
    EXPECT_TRUE(adapter.closeFile("UserSet1"));
}

TEST_F(SimulatedCameraTest, DeviceFilesRefuseWhatTheDeviceRefuses) {
    // As GenApi's adapter selects the file by its text, a name FileSelector does not list is an invalid
    // argument and an entry that is not available an access error, for the adapter and for a stream
    // (which frees its adapter and passes the error on). A map without file access cannot be attached.
    FileProtocolAdapter adapter;
    EXPECT_FALSE(adapter.attach(nullptr));
    ASSERT_TRUE(adapter.attach(map()));
    EXPECT_THROW(adapter.openFile("NoSuchFile", std::ios_base::in), GenICam::InvalidArgumentException);
    EXPECT_THROW(adapter.openFile("Firmware", std::ios_base::in), GenICam::AccessException);
    EXPECT_THROW(adapter.getBufSize("NoSuchFile", std::ios_base::in), GenICam::InvalidArgumentException);
    EXPECT_THROW(IDevFileStream(map(), "NoSuchFile"), GenICam::InvalidArgumentException);
    EXPECT_THROW(ODevFileStream(map(), "Firmware"), GenICam::AccessException);
    EXPECT_FALSE(IDevFileStream(nullptr, "UserSet1").is_open());

    // A transfer the device aborts: the stream goes bad instead of hanging, and the file works again after.
    camera().setFileContent(SimCamera::CSimulatedFiles::DeviceLog, std::string(600, 'L'));
    {
        IDevFileStream log(map(), "DeviceLog");
        ASSERT_TRUE(log.is_open());
        char first[10];
        log.read(first, 10);
        EXPECT_EQ(log.gcount(), 10);
        camera().setFailure(SimCamera::CSimulatedCamera::EFailure::IoError);
        char rest[590];
        log.read(rest, sizeof rest);
        EXPECT_LT(log.gcount(), 590);
        EXPECT_TRUE(log.bad());
        camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    }
    EXPECT_EQ(readWholeFile(map(), "DeviceLog"), std::string(600, 'L'));

    // A device that fails while a writing stream ends flushes nothing and releases everything, without
    // an exception leaving the destructor. The device still holds the file open until it is closed.
    {
        ODevFileStream userSet(map(), "UserSet2");
        ASSERT_TRUE(userSet.is_open());
        userSet << "not yet flushed";
        camera().setFailure(SimCamera::CSimulatedCamera::EFailure::IoError);
    }
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    EXPECT_FALSE(ODevFileStream(map(), "UserSet2").is_open());
    ASSERT_TRUE(adapter.attach(map()));
    EXPECT_TRUE(adapter.closeFile("UserSet2"));
    {
        ODevFileStream userSet(map(), "UserSet2");
        ASSERT_TRUE(userSet.is_open());
        userSet << "written";
    }
    EXPECT_EQ(readWholeFile(map(), "UserSet2"), "written");

    EXPECT_EQ(descriptionOf<GenICam::RuntimeException>([] { GenICam::INTEGRAL_CAST<int>(int64_t(1) << 40); }),
              "INTEGRAL_CAST failed");
}

// A real camera's file access features: the adapter refuses a name its FileSelector does not list as
// GenApi does, before it writes anything, and selects an offered file by its text.
TEST(DeviceFilesOfARealDescription, AnUnlistedNameIsAnInvalidArgument) {
    const std::string path = std::string(PC_CAMERA_DESCRIPTIONS) + "/flir_blackfly_s_pge_19s4m.xml";
    if (fileText(path).empty())
        GTEST_SKIP() << path << " is not there";
    SDescriptionInMemory flir(fileText(path), false);
    FileProtocolAdapter adapter;
    ASSERT_TRUE(adapter.attach(flir.map._Ptr));
    CEnumerationPtr selector(flir.map._GetNode("FileSelector"));
    const GenICam::gcstring before = selector->ToString();
    EXPECT_THROW(adapter.openFile("NoSuchFile", std::ios_base::in), GenICam::InvalidArgumentException);
    EXPECT_THROW(adapter.getBufSize("NoSuchFile", std::ios_base::out), GenICam::InvalidArgumentException);
    EXPECT_EQ(selector->ToString(), before);
    EXPECT_GT(adapter.getBufSize("UserFile1", std::ios_base::out), 0);
    EXPECT_EQ(selector->ToString(), "UserFile1");
}
