// Chunk data and events through GenApi's adapters: a payload's chunks and an event's data reach the chunk and
// event ports whose IDs they carry, with GenApi's access, callbacks, caching and refusals.
#include "MemoryDescriptions.h"
#include <GenApi/ChunkAdapterDcam.h>
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApi/ChunkAdapterGenDC.h>
#include <GenApi/ChunkAdapterGeneric.h>
#include <GenApi/ChunkAdapterU3V.h>
#include <GenApi/EventAdapter1394.h>
#include <GenApi/EventAdapterCL.h>
#include <GenApi/EventAdapterGEV.h>
#include <GenApi/EventAdapterGeneric.h>
#include <GenApi/EventAdapterU3V.h>
#include <GenApi/NodeCallback.h>
#include <gtest/gtest.h>

using namespace GenApi;
using GenICam::gcstring;

namespace {

const std::string description =
    "<RegisterDescription ModelName=\"M\" VendorName=\"V\" StandardNameSpace=\"None\" "
    "SchemaMajorVersion=\"1\" "
    "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" "
    "SubMinorVersion=\"0\" ProductGuid=\"a\" VersionGuid=\"b\" "
    "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">"
    "<Category Name=\"Root\"><pFeature>ChunkFrameID</pFeature><pFeature>ChunkExposure</pFeature>"
    "<pFeature>EventExposureEndTimestamp</pFeature></Category>"
    "<Port Name=\"Device\"/>"
    "<Port Name=\"FramePort\"><ChunkID>11</ChunkID></Port>"
    "<Port Name=\"ExposurePort\"><ChunkID>0000ABcd</ChunkID><CacheChunkData>Yes</CacheChunkData></Port>"
    "<IntReg Name=\"ChunkFrameID\"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode>"
    "<pPort>FramePort</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>LittleEndian</"
    "Endianess>"
    "</IntReg>"
    "<IntReg Name=\"ChunkExposure\"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode>"
    "<pPort>ExposurePort</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign>"
    "<Endianess>LittleEndian</Endianess></IntReg>"
    "<Port Name=\"EventPort\"><EventID>9001</EventID></Port>"
    "<IntReg "
    "Name=\"EventExposureEndTimestamp\"><Address>8</Address><Length>8</Length><AccessMode>RO</AccessMode>"
    "<pPort>EventPort</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</"
    "Endianess>"
    "</IntReg>"
    "</RegisterDescription>";

void putLittle(std::vector<uint8_t>& bytes, uint32_t value) {
    for (int i = 0; i < 4; ++i)
        bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

void putBig(std::vector<uint8_t>& bytes, uint64_t value, int size) {
    for (int i = size - 1; i >= 0; --i)
        bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

// A payload: an 8-byte image chunk (ID 1), the frame ID chunk (0x11) and the exposure chunk (0xabcd), each
// followed by its trailer in the given byte order.
std::vector<uint8_t> payload(uint32_t frameId, uint32_t exposure, bool bigEndian) {
    std::vector<uint8_t> bytes(8, 0x55);
    auto trailer = [&](uint32_t id, uint32_t length) {
        if (bigEndian) {
            putBig(bytes, id, 4);
            putBig(bytes, length, 4);
        } else {
            putLittle(bytes, id);
            putLittle(bytes, length);
        }
    };
    trailer(1, 8);
    putLittle(bytes, frameId);
    trailer(0x11, 4);
    putLittle(bytes, exposure);
    trailer(0xabcd, 4);
    return bytes;
}

// An IIDC trailer: the chunk's GUID (the ID's bytes, right-aligned), the length and its complement.
void dcamTrailer(std::vector<uint8_t>& bytes, uint32_t id, uint32_t length) {
    putBig(bytes, 0, 8);
    putBig(bytes, 0, 4);
    putBig(bytes, id, 4);
    putBig(bytes, length, 4);
    putBig(bytes, ~length, 4);
}

uint32_t crc32(const std::vector<uint8_t>& bytes) {
    uint32_t crc = 0xFFFFFFFFu;
    for (uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1u) ? 0xEDB88320u : 0u);
    }
    return ~crc;
}

struct SCounter {
    int count = 0;
    void onChange(INode*) { ++count; }
};

// Only the device port gets a register space: the adapters serve the chunk and event ports.
struct ChunkAndEventAdapters : testing::Test {
    ChunkAndEventAdapters() {
        described._LoadXMLFromString(gcstring(description.c_str(), description.size()));
        described._Connect(&device, "Device");
    }
    CNodeMapRef described;
    CMemoryPort device;
    INodeMap* map() { return described._Ptr; }
    CIntegerPtr integer(const char* name) { return map()->GetNode(name); }
};

}  // namespace

TEST_F(ChunkAndEventAdapters, GigEVisionChunksAttachUpdateCacheAndRefuseBadLayouts) {
    SCounter counter;
    int& frameCallbacks = counter.count;
    const CallbackHandleType handle =
        Register(integer("ChunkFrameID")->GetNode(), counter, &SCounter::onChange);
    // Unattached chunk ports hold nothing yet.
    EXPECT_EQ(integer("ChunkFrameID")->GetAccessMode(), NA);
    IChunkPort* framePort = dynamic_cast<IChunkPort*>(map()->GetNode("FramePort"));
    ASSERT_NE(framePort, nullptr);
    EXPECT_EQ(framePort->GetChunkID(), "11");

    CChunkAdapterGEV adapter(map());
    EXPECT_EQ(frameCallbacks, 1);
    std::vector<uint8_t> a = payload(7, 2500, true);
    EXPECT_TRUE(adapter.CheckBufferLayout(a.data(), static_cast<int64_t>(a.size())));
    AttachStatistics_t statistics{-1, -1, -1};
    adapter.AttachBuffer(a.data(), static_cast<int64_t>(a.size()), &statistics);
    EXPECT_EQ(statistics.NumChunkPorts, 2);
    EXPECT_EQ(statistics.NumChunks, 3);
    EXPECT_EQ(statistics.NumAttachedChunks, 2);
    EXPECT_EQ(frameCallbacks, 2);
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 7);
    // An ID given with leading zero bytes and mixed case matches the trailer's.
    EXPECT_EQ(integer("ChunkExposure")->GetValue(), 2500);

    // The next frame in another buffer, chunks at the same offsets.
    std::vector<uint8_t> b = payload(8, 3000, true);
    adapter.UpdateBuffer(b.data());
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 8);
    EXPECT_EQ(integer("ChunkExposure")->GetValue(), 3000);

    // Refused whole: one byte short, trailers in the other byte order, nothing; the last buffer stays.
    EXPECT_FALSE(adapter.CheckBufferLayout(a.data(), static_cast<int64_t>(a.size()) - 1));
    std::vector<uint8_t> little = payload(9, 1, false);
    EXPECT_FALSE(adapter.CheckBufferLayout(little.data(), static_cast<int64_t>(little.size())));
    try {
        adapter.AttachBuffer(little.data(), static_cast<int64_t>(little.size()));
        ADD_FAILURE() << "a buffer with little-endian trailers was attached";
    } catch (const GenICam::RuntimeException& e) {
        EXPECT_STREQ(e.GetDescription(), "Invalid layout of buffer attached to chunk parser!");
    }
    EXPECT_THROW(adapter.AttachBuffer(nullptr, 0), GenICam::RuntimeException);
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 8);

    // Without the buffer, only the port that caches its chunk still answers, until the caches go.
    adapter.DetachBuffer();
    EXPECT_EQ(integer("ChunkFrameID")->GetAccessMode(), NA);
    EXPECT_EQ(integer("ChunkExposure")->GetAccessMode(), RO);
    EXPECT_EQ(integer("ChunkExposure")->GetValue(), 3000);
    adapter.ClearCaches();
    EXPECT_EQ(integer("ChunkExposure")->GetAccessMode(), NA);

    adapter.DetachNodeMap();
    integer("ChunkFrameID")->GetNode()->DeregisterCallback(handle);
}

TEST_F(ChunkAndEventAdapters, USB3VisionAndListedChunksReachTheirPorts) {
    CChunkAdapterU3V u3v(map());
    std::vector<uint8_t> little = payload(41, 100, false);
    std::vector<uint8_t> big = payload(41, 100, true);
    EXPECT_TRUE(u3v.CheckBufferLayout(little.data(), static_cast<int64_t>(little.size())));
    EXPECT_FALSE(u3v.CheckBufferLayout(big.data(), static_cast<int64_t>(big.size())));
    u3v.AttachBuffer(little.data(), static_cast<int64_t>(little.size()));
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 41);
    // Reading past the chunk names the range, the address in hexadecimal.
    uint8_t bytes[8];
    try {
        dynamic_cast<IPort*>(map()->GetNode("FramePort"))->Read(bytes, 0x10, 8);
        ADD_FAILURE() << "a read past the chunk succeeded";
    } catch (const GenICam::RuntimeException& e) {
        EXPECT_NE(std::string(e.GetDescription()).find("Range error reading(10, 8)"), std::string::npos);
    }
    u3v.DetachNodeMap();

    // A listed buffer: chunk data back to back, IDs as numbers or as text.
    CChunkAdapterGeneric generic(map());
    std::vector<uint8_t> data;
    putLittle(data, 5);
    putLittle(data, 6000);
    SingleChunkData_t table[] = {{0x11, 0, 4}, {0xabcd, 4, 4}};
    AttachStatistics_t statistics{-1, -1, -1};
    generic.AttachBuffer(data.data(), table, 2, &statistics);
    EXPECT_EQ(statistics.NumAttachedChunks, 2);
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 5);
    EXPECT_EQ(integer("ChunkExposure")->GetValue(), 6000);
    SingleChunkDataStr_t texts[] = {{"11", 4, 4}, {"115", 0, 4}};
    EXPECT_THROW(generic.AttachBuffer(data.data(), texts, 2, &statistics), GenICam::RuntimeException);
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 6000);
    // Without a list there is nothing to attach.
    EXPECT_FALSE(generic.CheckBufferLayout(data.data(), static_cast<int64_t>(data.size())));
}

TEST_F(ChunkAndEventAdapters, EventsReachTheirPortsAndMalformedMessagesAreRefused) {
    CIntegerPtr timestamp = integer("EventExposureEndTimestamp");
    EXPECT_EQ(timestamp->GetAccessMode(), NI);
    CEventAdapterGEV gev(map());
    EXPECT_EQ(timestamp->GetAccessMode(), NA);
    // EVENTDATA: header, one 16-byte item (ID 0x9001, timestamp 0x0102030405060708), 4 data bytes.
    std::vector<uint8_t> message{0x42, 0x00, 0x00, 0xc2, 0x00, 0x14, 0x00, 0x01};
    putBig(message, 0, 2);
    putBig(message, 0x9001, 2);
    putBig(message, 0, 4);
    putBig(message, 0x0102030405060708ULL, 8);
    putBig(message, 0xdeadbeef, 4);
    gev.DeliverMessage(message.data(), static_cast<uint32_t>(message.size()));
    EXPECT_EQ(timestamp->GetAccessMode(), RO);
    EXPECT_EQ(timestamp->GetValue(), 0x0102030405060708LL);

    std::vector<uint8_t> wrongMagic = message;
    wrongMagic[0] = 0x43;
    try {
        gev.DeliverMessage(wrongMagic.data(), static_cast<uint32_t>(wrongMagic.size()));
        ADD_FAILURE() << "a message with a wrong magic was delivered";
    } catch (const GenICam::RuntimeException& e) {
        EXPECT_STREQ(e.GetDescription(), "Malformed message - wrong magic 43 (42 expected)");
    }
    std::vector<uint8_t> withoutData(message.begin(), message.begin() + 24);
    EXPECT_THROW(gev.DeliverMessage(withoutData.data(), 24), GenICam::RuntimeException);
    gev.DetachNodeMap();
    EXPECT_EQ(timestamp->GetAccessMode(), NI);

    // USB3 Vision: the port's address 0 is the event data's reserved field; the timestamp sits at 4.
    CEventAdapterU3V u3v(map());
    std::vector<uint8_t> u3vMessage;
    putLittle(u3vMessage, 0x45563355);
    u3vMessage.insert(u3vMessage.end(), {0x00, 0x00, 0x00, 0x0c, 16, 0x00, 0x01, 0x00});
    u3vMessage.insert(u3vMessage.end(), {0x00, 0x00, 0x01, 0x90});
    putBig(u3vMessage, 0, 4);
    putBig(u3vMessage, 0x1122334455667788ULL, 8);
    u3v.DeliverMessage(u3vMessage.data(), static_cast<uint32_t>(u3vMessage.size()));
    EXPECT_EQ(timestamp->GetValue(), 0x1122334455667788LL);
    std::vector<uint8_t> tooLong = u3vMessage;
    tooLong[8] = 40;
    EXPECT_THROW(u3v.DeliverMessage(tooLong.data(), static_cast<uint32_t>(tooLong.size())),
                 GenICam::RuntimeException);
    u3v.DetachNodeMap();

    // Generic: the caller names the event, as a number or as text of whole bytes.
    CEventAdapterGeneric generic(map());
    std::vector<uint8_t> data(8, 0);
    putBig(data, 77, 8);
    generic.DeliverMessage(data.data(), 16, uint64_t(0x9001));
    EXPECT_EQ(timestamp->GetValue(), 77);
    std::vector<uint8_t> other(8, 0);
    putBig(other, 78, 8);
    generic.DeliverMessage(other.data(), 16, gcstring("9001"));
    EXPECT_EQ(timestamp->GetValue(), 78);
    EXPECT_THROW(generic.DeliverMessage(other.data(), 16, gcstring("123")), GenICam::RuntimeException);
}

TEST_F(ChunkAndEventAdapters, IidcGenDCAndCameraLinkLayoutsReachTheirPorts) {
    // IIDC: GUID trailers walked from the end, with or without a closing CRC-32.
    std::vector<uint8_t> buffer(8, 0x55);
    dcamTrailer(buffer, 1, 8);
    putLittle(buffer, 4711);
    dcamTrailer(buffer, 0x11, 4);
    CChunkAdapterDcam dcam(map());
    EXPECT_TRUE(dcam.CheckBufferLayout(buffer.data(), static_cast<int64_t>(buffer.size())));
    EXPECT_FALSE(dcam.HasCRC(buffer.data(), static_cast<int64_t>(buffer.size())));
    AttachStatistics_t statistics;
    dcam.AttachBuffer(buffer.data(), static_cast<int64_t>(buffer.size()), &statistics);
    EXPECT_EQ(statistics.NumChunks, 2);
    EXPECT_EQ(statistics.NumAttachedChunks, 1);
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 4711);
    std::vector<uint8_t> withCrc = buffer;
    putBig(withCrc, crc32(buffer), 4);
    EXPECT_TRUE(dcam.HasCRC(withCrc.data(), static_cast<int64_t>(withCrc.size())));
    EXPECT_TRUE(dcam.CheckCRC(withCrc.data(), static_cast<int64_t>(withCrc.size())));
    withCrc[3] ^= 1;
    EXPECT_FALSE(dcam.CheckCRC(withCrc.data(), static_cast<int64_t>(withCrc.size())));
    // A length whose complement does not match is no trailer: the buffer is refused, the last one stays.
    std::vector<uint8_t> broken = buffer;
    broken.back() ^= 1;
    EXPECT_FALSE(dcam.CheckBufferLayout(broken.data(), static_cast<int64_t>(broken.size())));
    EXPECT_THROW(dcam.AttachBuffer(broken.data(), static_cast<int64_t>(broken.size())),
                 GenICam::RuntimeException);
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 4711);
    dcam.DetachNodeMap();

    // GenDC metadata: the USB3 Vision walk.
    CChunkAdapterGenDC genDC(map());
    std::vector<uint8_t> u3vPayload = payload(12, 34, false);
    genDC.AttachBuffer(u3vPayload.data(), static_cast<int64_t>(u3vPayload.size()));
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 12);
    EXPECT_EQ(integer("ChunkExposure")->GetValue(), 34);
    genDC.DetachNodeMap();

    // Camera Link: GenCP behind the serial prefix (preamble 0x0100, two CRC-16s, channel).
    CIntegerPtr timestamp = integer("EventExposureEndTimestamp");
    CEventAdapterCL cl(map());
    std::vector<uint8_t> clMessage{0x00, 0x01, 0, 0, 0, 0, 0, 0};
    clMessage.insert(clMessage.end(), {0x00, 0x00, 0x00, 0x0c, 16, 0x00, 0x01, 0x00});
    clMessage.insert(clMessage.end(), {0x00, 0x00, 0x01, 0x90});
    putBig(clMessage, 0, 4);
    putBig(clMessage, 0x0A0B0C0D0E0F1011ULL, 8);
    cl.DeliverMessage(clMessage.data(), static_cast<uint32_t>(clMessage.size()));
    EXPECT_EQ(timestamp->GetValue(), 0x0A0B0C0D0E0F1011LL);
    std::vector<uint8_t> wrongPreamble = clMessage;
    wrongPreamble[1] = 0x02;
    EXPECT_THROW(cl.DeliverMessage(wrongPreamble.data(), static_cast<uint32_t>(wrongPreamble.size())),
                 GenICam::RuntimeException);
    EXPECT_THROW(cl.DeliverMessage(clMessage.data(), 12), GenICam::RuntimeException);
    cl.DetachNodeMap();

    // IIDC events: the ID in the first quadlet's low half; address 0 is the message's first byte.
    CEventAdapter1394 iidc(map());
    std::vector<uint8_t> iidcMessage;
    putBig(iidcMessage, 0x9001, 4);
    putBig(iidcMessage, 0, 4);
    putBig(iidcMessage, 99, 8);
    iidc.DeliverMessage(iidcMessage.data(), static_cast<uint32_t>(iidcMessage.size()));
    EXPECT_EQ(timestamp->GetValue(), 99);
    EXPECT_THROW(iidc.DeliverMessage(iidcMessage.data(), 3), GenICam::RuntimeException);
}
