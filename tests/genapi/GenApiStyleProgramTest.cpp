// A program written against GenApi's published interface, built with the engine's headers only.
// This target sees no Aravis include path, so any Aravis header reachable from GenApi.h breaks the build.
#include <GenApi/GenApi.h>
#include <gtest/gtest.h>

using namespace GENAPI_NAMESPACE;
using namespace GENICAM_NAMESPACE;

namespace {

const char* const xml =
    "<?xml version=\"1.0\"?>"
    "<RegisterDescription ModelName=\"Tiny\" VendorName=\"Test\" StandardNameSpace=\"None\""
    " SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\""
    " MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\""
    " ProductGuid=\"00000000-0000-0000-0000-000000000001\" "
    "VersionGuid=\"00000000-0000-0000-0000-000000000002\">"
    "<Category Name=\"Root\"><pFeature>Counter</pFeature><pFeature>Mode</pFeature></Category>"
    "<IntReg Name=\"Counter\"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode>"
    "<pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>"
    "<Enumeration Name=\"Mode\"><EnumEntry Name=\"Slow\"><Value>0</Value></EnumEntry>"
    "<EnumEntry Name=\"Fast\"><Value>1</Value></EnumEntry><pValue>ModeReg</pValue></Enumeration>"
    "<IntReg Name=\"ModeReg\"><Address>4</Address><Length>4</Length><AccessMode>RW</AccessMode>"
    "<pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>"
    "<Port Name=\"Device\"/>"
    "</RegisterDescription>";

struct Memory {
    uint32_t counter;
    uint32_t mode;
};

}  // namespace

TEST(GenApiStyleProgram, LoadsConnectsReadsAndWrites) {
    CNodeMapRef camera;
    camera._LoadXMLFromString(xml);
    CTestPortStruct<Memory> port;
    ASSERT_TRUE(camera._Connect(&port));

    CIntegerPtr counter = camera._GetNode("Counter");
    ASSERT_TRUE(counter);
    *counter = 17;
    EXPECT_EQ(port.counter, 17u);
    EXPECT_EQ((*counter)(), 17);
    EXPECT_EQ(counter->GetValue(), 17);
    EXPECT_GT(port.GetNumWrites(), 0);

    CEnumerationPtr mode = camera._GetNode("Mode");
    *mode = "Fast";
    EXPECT_EQ(port.mode, 1u);
    EXPECT_STREQ(mode->GetCurrentEntry()->GetSymbolic().c_str(), "Fast");

    if (IsWritable(counter))
        counter->FromString("0x20");
    EXPECT_EQ(port.counter, 32u);
    gcstring text = counter->ToString();
    EXPECT_STREQ(text.c_str(), "32");

    // Copies of the reference share one map; the last one destroys it.
    CNodeMapRef copy(camera);
    EXPECT_EQ(copy._Ptr, camera._Ptr);
    camera._Destroy();
    EXPECT_EQ(CIntegerPtr(copy._GetNode("Counter"))->GetValue(), 32);
    AutoLock lock(copy._Ptr->GetLock());
    EXPECT_EQ(copy._GetNode("Counter")->GetAccessMode(), RW);
}
