// GenApi's rules for change: what a write or an invalidation reaches, what registers keep, where writes
// land, how access evaluations that fail are remembered, and what Poll refreshes.
#include "SimulatedCameraFixture.h"
#include "WordMap.h"
#include <GenApi/GenApi.h>
#include <gtest/gtest.h>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>

using namespace GenApi;
using GenICam::gcstring;

// Registers that share bytes each keep their own: a write through one leaves what the others keep, as
// GenApi's registers do, unless the description links them (pInvalidator); invalidating a register reads
// its bytes again. A NoCache register at the same bytes always reads the device, and a write-through
// register keeps what it wrote even beside it.
TEST(RegisterCache, EachRegisterKeepsItsOwnBytes) {
    SWordMap words(intReg("Wide", 8, "", 8) + intReg("High", 12) + intReg("Low", 4, "", 8) +
                   intReg("Linked", 8, "<pInvalidator>High</pInvalidator>", 8) +
                   intReg("Fresh", 12, "<Cachable>NoCache</Cachable>") + intReg("Beside", 16));
    CNodeMapRef& map = words.map;
    CWordPort& port = words.port;
    words.load({{4, 1}, {8, 2}, {12, 3}, {16, 4}});
    CIntegerPtr wide(map._GetNode("Wide")), high(map._GetNode("High")), low(map._GetNode("Low"));
    CIntegerPtr linked(map._GetNode("Linked")), fresh(map._GetNode("Fresh")), beside(map._GetNode("Beside"));
    EXPECT_EQ(wide->GetValue(), (int64_t(3) << 32) | 2);
    EXPECT_EQ(linked->GetValue(), (int64_t(3) << 32) | 2);
    EXPECT_EQ(low->GetValue(), (int64_t(2) << 32) | 1);
    EXPECT_EQ(beside->GetValue(), 4);

    high->SetValue(7);
    EXPECT_EQ(wide->GetValue(), (int64_t(3) << 32) | 2);
    EXPECT_EQ(linked->GetValue(), (int64_t(7) << 32) | 2);
    EXPECT_EQ(fresh->GetValue(), 7);
    map._GetNode("Wide")->InvalidateNode();
    EXPECT_EQ(wide->GetValue(), (int64_t(7) << 32) | 2);

    const int readsBefore = port.reads;
    EXPECT_EQ(high->GetValue(), 7);
    EXPECT_EQ(port.reads, readsBefore);
    fresh->SetValue(8);
    EXPECT_EQ(high->GetValue(), 7);
    EXPECT_EQ(fresh->GetValue(), 8);
    EXPECT_GT(port.reads, readsBefore);

    wide->SetValue((int64_t(9) << 32) | 5);
    EXPECT_EQ(low->GetValue(), (int64_t(2) << 32) | 1);
    map._GetNode("Low")->InvalidateNode();
    EXPECT_EQ(low->GetValue(), (int64_t(5) << 32) | 1);
    port.words[16] = 6;  // behind GenApi's back: the register beside keeps its cached bytes
    EXPECT_EQ(beside->GetValue(), 4);
}

// A write makes every value it reaches compute again: values read through a formula over the written
// register, or through a register whose address follows the written node. A register at a computed
// address, or an index pattern over the written register's bytes, is left alone by a write to another
// register it is not linked to, as in GenApi.
TEST(RegisterCache, KeptValuesFollowEveryWriteThatReachesThem) {
    SWordMap words(intReg("Fixed", 16) + intReg("Gain1", 36) + intReg("Beside", 40) +
                   R"(<Integer Name="Where"><Value>16</Value></Integer>
  <IntReg Name="Moving"><pAddress>Where</pAddress><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <IntSwissKnife Name="Doubled"><pVariable Name="M">Moving</pVariable><Formula>2*M</Formula></IntSwissKnife>
  <IntSwissKnife Name="BesidePlusOne"><pVariable Name="B">Beside</pVariable><Formula>B+1</Formula></IntSwissKnife>
  <Integer Name="Selector"><Value>0</Value></Integer>
  <IntReg Name="Gains"><Address>32</Address><pIndex>Selector</pIndex><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>)");
    CNodeMapRef& map = words.map;
    CWordPort& port = words.port;
    words.load({{16, 3}, {20, 4}, {36, 5}, {40, 6}});
    CIntegerPtr fixed(map._GetNode("Fixed")), doubled(map._GetNode("Doubled")), where(map._GetNode("Where"));
    CIntegerPtr gains(map._GetNode("Gains")), gain1(map._GetNode("Gain1")),
        selector(map._GetNode("Selector"));
    CIntegerPtr besidePlusOne(map._GetNode("BesidePlusOne"));
    EXPECT_EQ(doubled->GetValue(), 6);
    selector->SetValue(1);
    EXPECT_EQ(gains->GetValue(), 5);
    EXPECT_EQ(besidePlusOne->GetValue(), 7);

    // Through a register found by its computed address: only a change of the address reads again.
    fixed->SetValue(8);
    EXPECT_EQ(doubled->GetValue(), 6);
    where->SetValue(20);
    EXPECT_EQ(doubled->GetValue(), 8);
    where->SetValue(16);
    EXPECT_EQ(doubled->GetValue(), 16);
    // Between an index pattern and the fixed register at one of its indices, both ways: each keeps its own
    // bytes until it is invalidated.
    gain1->SetValue(9);
    EXPECT_EQ(gains->GetValue(), 5);
    map._GetNode("Gains")->InvalidateNode();
    EXPECT_EQ(gains->GetValue(), 9);
    gains->SetValue(11);
    EXPECT_EQ(gain1->GetValue(), 9);
    map._GetNode("Gain1")->InvalidateNode();
    EXPECT_EQ(gain1->GetValue(), 11);
    // A formula over a register written through the port node itself.
    const uint32_t twelve = 12;
    CPortPtr(map._GetNode("Device"))->Write(&twelve, 40, 4);
    EXPECT_EQ(besidePlusOne->GetValue(), 13);
    // Bytes changed behind GenApi's back stay unseen until something invalidates them, as in GenApi.
    port.words[40] = 20;
    EXPECT_EQ(besidePlusOne->GetValue(), 13);
    map._GetNode("Beside")->InvalidateNode();
    EXPECT_EQ(besidePlusOne->GetValue(), 21);
}

// Integer registers are written at the address their description adds up, in their byte order, whether
// written themselves or through an integer whose pValue names them.
TEST(RegisterWrites, LandWhereAndAsTheDescriptionPlacesThem) {
    SWordMap words(R"(<Integer Name="Base"><Value>16</Value></Integer>
  <Integer Name="Index"><Value>2</Value></Integer>
  <IntReg Name="Short"><Address>4</Address><pAddress>Base</pAddress><Length>2</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
  <Integer Name="ViaShort"><pValue>Short</pValue></Integer>
  <IntReg Name="Table"><Address>64</Address><pIndex Offset="8">Index</pIndex><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>)");
    CNodeMapRef& map = words.map;
    CWordPort& port = words.port;
    CIntegerPtr(map._GetNode("ViaShort"))->SetValue(0x1234);
    EXPECT_EQ(port.words[20], 0x3412u);  // bytes 0x12 0x34 at address 20, read back as a little-endian word
    EXPECT_EQ(CIntegerPtr(map._GetNode("Short"))->GetValue(), 0x1234);
    CIntegerPtr(map._GetNode("Table"))->SetValue(-2);
    EXPECT_EQ(port.words[80], 0xFFFFFFFEu);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Table"))->GetValue(), -2);
    CIntegerPtr(map._GetNode("Base"))->SetValue(32);
    CIntegerPtr(map._GetNode("Short"))->SetValue(0x00ff);
    EXPECT_EQ(port.words[36], 0xff00u);
    EXPECT_EQ(port.words[20], 0x3412u);
    // Another index reaches its own entry, untouched so far.
    CIntegerPtr(map._GetNode("Index"))->SetValue(3);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Table"))->GetValue(), 0);
}

// Access modes as GenApi works them out where an evaluation fails: a category asks its features and a
// value its limits before their own conditions; an evaluation that an exception ended leaves RW behind
// when its access cannot be kept (an enumeration's read asks again), and is evaluated again at once when
// it can.
TEST(AccessRules, FailedEvaluationsLeaveRWBehindWhereTheAccessCannotBeKept) {
    // A formula that names a constant beside an enumeration cannot be evaluated ("NULL pointer
    // dereferenced" in GenApi); over a NoCache register its answer cannot be kept, over a cached one it can.
    auto failing = [](const std::string& prefix, const std::string& reg) {
        return "<Enumeration Name=\"" + prefix +
               "Method\"><EnumEntry Name=\"A\"><Value>1</Value></EnumEntry><pValue>" + reg +
               "</pValue></Enumeration><IntSwissKnife Name=\"" + prefix + "Broken\"><pVariable Name=\"M\">" +
               prefix +
               "Method</pVariable><Constant "
               "Name=\"K\">1</Constant><Formula>(M=K)?1:0</Formula></IntSwissKnife>\n";
    };
    SWordMap words(intReg("MethodReg", 0, "<Cachable>NoCache</Cachable>") + intReg("KeptMethodReg", 4) +
                   intReg("ChoiceReg", 8, "<Cachable>NoCache</Cachable>") + failing("", "MethodReg") +
                   failing("Kept", "KeptMethodReg") +
                   R"(<Integer Name="Off"><Value>0</Value></Integer>
  <Integer Name="Guarded"><pIsAvailable>Broken</pIsAvailable><Value>5</Value></Integer>
  <Integer Name="KeptGuarded"><pIsAvailable>KeptBroken</pIsAvailable><Value>5</Value></Integer>
  <Category Name="Group"><pIsImplemented>Off</pIsImplemented><pFeature>Guarded</pFeature></Category>
  <Category Name="KeptGroup"><pIsImplemented>Off</pIsImplemented><pFeature>KeptGuarded</pFeature></Category>
  <Enumeration Name="Choice"><pIsAvailable>Broken</pIsAvailable><EnumEntry Name="One"><Value>1</Value></EnumEntry><pValue>ChoiceReg</pValue></Enumeration>
  <Category Name="Choices"><pFeature>Choice</pFeature></Category>
  <Float Name="TimeMin"><pIsAvailable>Broken</pIsAvailable><Value>1</Value></Float>
  <Float Name="TimeMax"><pIsAvailable>Broken</pIsAvailable><Value>9</Value></Float>
  <Float Name="Time"><pIsAvailable>Broken</pIsAvailable><Value>2</Value><pMin>TimeMin</pMin><pMax>TimeMax</pMax></Float>
  <Integer Name="Counted"><pIsAvailable>Broken</pIsAvailable><Value>3</Value></Integer>
  <Integer Name="KeptCounted"><pIsAvailable>KeptBroken</pIsAvailable><Value>3</Value></Integer>
  <IntSwissKnife Name="Twice"><pVariable Name="C">Counted</pVariable><Formula>C*2</Formula></IntSwissKnife>
  <IntSwissKnife Name="KeptTwice"><pVariable Name="C">KeptCounted</pVariable><Formula>C*2</Formula></IntSwissKnife>)");
    CNodeMapRef& map = words.map;
    INode* guarded = map._GetNode("Guarded");
    INode* keptGuarded = map._GetNode("KeptGuarded");

    // The category fails through its feature, though its own condition says it is not implemented.
    ASSERT_THROW(map._GetNode("Group")->GetAccessMode(), GenICam::LogicalErrorException);
    // The feature answers RW from then on, and reads; asked again, the category hears RW from it and its
    // own condition decides.
    EXPECT_EQ(guarded->GetAccessMode(), RW);
    EXPECT_EQ(guarded->GetAccessMode(), RW);
    EXPECT_EQ(CIntegerPtr(guarded)->GetValue(), 5);
    EXPECT_EQ(map._GetNode("Group")->GetAccessMode(), NI);
    // Where the access can be kept, every question evaluates it again, and fails again.
    EXPECT_THROW(map._GetNode("KeptGroup")->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_THROW(keptGuarded->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_THROW(keptGuarded->GetAccessMode(), GenICam::LogicalErrorException);

    // An enumeration answers RW the same way, but its read asks again and fails.
    ASSERT_THROW(map._GetNode("Choices")->GetAccessMode(), GenICam::LogicalErrorException);
    CEnumerationPtr choice(map._GetNode("Choice"));
    EXPECT_EQ(choice->GetAccessMode(), RW);
    EXPECT_THROW(choice->ToString(), GenICam::LogicalErrorException);

    // A value asks its limits first: the failure comes from its minimum, which answers RW afterwards; its
    // maximum was never asked and fails in its own turn.
    EXPECT_THROW(map._GetNode("Time")->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_EQ(map._GetNode("TimeMin")->GetAccessMode(), RW);
    EXPECT_THROW(map._GetNode("TimeMax")->GetAccessMode(), GenICam::LogicalErrorException);

    // A formula's access is kept only where its variables' can be: over a failing NoCache condition it
    // answers RW once it has failed; over a cached one it fails every time.
    EXPECT_THROW(map._GetNode("Twice")->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_EQ(map._GetNode("Twice")->GetAccessMode(), RW);
    EXPECT_THROW(map._GetNode("KeptTwice")->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_THROW(map._GetNode("KeptTwice")->GetAccessMode(), GenICam::LogicalErrorException);

    // The RW left behind lasts until something the access depends on changes: then it is evaluated again.
    CIntegerPtr(map._GetNode("MethodReg"))->SetValue(1);
    EXPECT_THROW(guarded->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_EQ(guarded->GetAccessMode(), RW);
}

namespace {

struct SCalls {
    void onChange(INode* node) { names.push_back(node->GetName().c_str()); }
    std::vector<std::string> names;
};

}  // namespace

// Poll invalidates a polled register and calls back what depends on it; a polled command is only asked
// whether a running execution has finished, and calls back when it has.
TEST(PollRules, PolledRegistersAreInvalidatedAndPolledCommandsReportTheirEnd) {
    SWordMap words(
        intReg("Temperature", 0, "<PollingTime>100</PollingTime><Cachable>WriteThrough</Cachable>") +
        R"(<Integer Name="Celsius"><pValue>Temperature</pValue></Integer>
  <Command Name="Save"><pValue>SaveReg</pValue><CommandValue>1</CommandValue><PollingTime>100</PollingTime></Command>
)" + intReg("SaveReg", 4, "<Cachable>NoCache</Cachable>"));
    CNodeMapRef& map = words.map;
    SCalls calls;
    for (const char* name : {"Temperature", "Celsius", "Save", "SaveReg"})
        Register(map._GetNode(name), calls, &SCalls::onChange);
    words.load({{0, 20}, {4, 0}});
    EXPECT_EQ(CIntegerPtr(map._GetNode("Celsius"))->GetValue(), 20);
    words.port.words[0] = 21;
    calls.names.clear();
    map._Poll(100);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Celsius"))->GetValue(), 21);
    std::sort(calls.names.begin(), calls.names.end());
    EXPECT_EQ(calls.names, (std::vector<std::string>{"Celsius", "Temperature"}));

    CCommandPtr save(map._GetNode("Save"));
    save->Execute();
    calls.names.clear();
    map._Poll(100);  // still running: nothing to report
    EXPECT_EQ(std::count(calls.names.begin(), calls.names.end(), "Save"), 0);
    words.port.words[4] = 0;  // the device finished
    calls.names.clear();
    map._Poll(100);
    EXPECT_EQ(std::count(calls.names.begin(), calls.names.end(), "Save"), 1);
    calls.names.clear();
    map._Poll(100);  // done and not run again: nothing at all
    EXPECT_EQ(std::count(calls.names.begin(), calls.names.end(), "Save"), 0);
}

// A register keeps what it read whatever adds up to its place (one Address, several, or a node giving
// it): invalidating the feature on it computes the feature again from that, and only the register's own
// invalidation, or a read ignoring the cache (and the read after it), reads the device again.
TEST(RegisterCaching, RegistersKeepWhatTheyReadWhereverTheirPlaceComesFrom) {
    SWordMap words(
        R"(<IntReg Name="SummedReg"><Address>0x100</Address><Address>0x20</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <IntReg Name="SingleReg"><Address>0x200</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <Integer Name="Where"><Value>0x300</Value></Integer>
  <IntReg Name="ComputedReg"><pAddress>Where</pAddress><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <Integer Name="Summed"><pValue>SummedReg</pValue></Integer>
  <Integer Name="Single"><pValue>SingleReg</pValue></Integer>
  <Integer Name="Computed"><pValue>ComputedReg</pValue></Integer>)");
    words.load({{0x120, 7}, {0x200, 7}, {0x300, 7}});
    const std::map<std::string, int64_t> addresses = {
        {"Summed", 0x120}, {"Single", 0x200}, {"Computed", 0x300}};
    for (const auto& place : addresses) {
        SCOPED_TRACE(place.first);
        CIntegerPtr feature(words.map._GetNode(place.first.c_str()));
        EXPECT_EQ(feature->GetValue(), 7);
        words.port.words[place.second] = 9;
        feature->GetNode()->InvalidateNode();
        EXPECT_EQ(feature->GetValue(), 7);
        words.map._GetNode((place.first + "Reg").c_str())->InvalidateNode();
        EXPECT_EQ(feature->GetValue(), 9);
        words.port.words[place.second] = 11;
        EXPECT_EQ(feature->GetValue(false, true), 11);
        words.port.words[place.second] = 12;
        EXPECT_EQ(feature->GetValue(), 12);
    }
}

// A write keeps what it wrote in its register though the write reaches the register's pInvalidator, as
// GenApi caches a written value after the invalidation the write causes; the invalidator's own change
// still drops the bytes.
TEST(RegisterCaching, AWriteKeepsWhatItWroteThoughItReachesTheInvalidator) {
    SWordMap words(
        R"(<IntReg Name="LevelReg"><Address>0x40</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><pInvalidator>Twice</pInvalidator><Endianess>LittleEndian</Endianess></IntReg>
  <Integer Name="Level"><pValue>LevelReg</pValue></Integer>
  <IntSwissKnife Name="Twice"><pVariable Name="L">Level</pVariable><Formula>L*2</Formula></IntSwissKnife>)");
    words.load({{0x40, 1}});
    CIntegerPtr level(words.map._GetNode("Level"));
    EXPECT_EQ(level->GetValue(), 1);
    level->SetValue(5);
    const int reads = words.port.reads;
    EXPECT_EQ(level->GetValue(), 5);
    EXPECT_EQ(CIntegerPtr(words.map._GetNode("Twice"))->GetValue(), 10);
    EXPECT_EQ(words.port.reads, reads);

    words.port.words[0x40] = 9;
    words.map._GetNode("Twice")->InvalidateNode();
    EXPECT_EQ(level->GetValue(), 9);
    EXPECT_EQ(words.port.reads, reads + 1);
}

// A command, a boolean and an enumeration write their value to their pValue node as any write would, so
// that the integer's pValueCopy registers receive it too.
TEST(WriteRules, CommandsBooleansAndEnumerationsWriteThroughThePValueNodeAndItsCopies) {
    SWordMap words(intReg("CopyA", 0x50) + intReg("CopyB", 0x60) +
                   R"(<Integer Name="Source"><Value>0</Value></Integer>
  <Integer Name="Shared"><pValue>Source</pValue><pValueCopy>CopyA</pValueCopy><pValueCopy>CopyB</pValueCopy></Integer>
  <Command Name="Reset"><pValue>Shared</pValue><CommandValue>3</CommandValue></Command>
  <Boolean Name="Switch"><pValue>Shared</pValue><OnValue>5</OnValue><OffValue>4</OffValue></Boolean>
  <Enumeration Name="Mode"><EnumEntry Name="Six"><Value>6</Value></EnumEntry><pValue>Shared</pValue></Enumeration>)");
    words.load({{0x50, 7}, {0x60, 8}});
    auto copies = [&](uint32_t value) {
        EXPECT_EQ(words.port.words[0x50], value);
        EXPECT_EQ(words.port.words[0x60], value);
        EXPECT_EQ(CIntegerPtr(words.map._GetNode("CopyA"))->GetValue(), value);
    };
    CCommandPtr(words.map._GetNode("Reset"))->Execute();
    copies(3);
    CBooleanPtr(words.map._GetNode("Switch"))->SetValue(true);
    copies(5);
    CBooleanPtr(words.map._GetNode("Switch"))->SetValue(false);
    copies(4);
    CEnumerationPtr(words.map._GetNode("Mode"))->FromString("Six");
    copies(6);
}

// An integer hands a checked write on to its pValue node, whose own limits apply as well: a value inside
// the integer's range but outside a 16-bit field is refused with the field's maximum.
TEST(WriteRules, AnIntegersPValueNodeChecksItsOwnLimits) {
    SWordMap words(
        R"(<MaskedIntReg Name="Field"><Address>0x80</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><LSB>0</LSB><MSB>15</MSB><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></MaskedIntReg>
  <Integer Name="Size"><pValue>Field</pValue><Min>0</Min><Max>100000</Max></Integer>)");
    words.load({{0x80, 5}});
    CIntegerPtr size(words.map._GetNode("Size"));
    size->SetValue(65535);
    EXPECT_EQ(size->GetValue(), 65535);
    EXPECT_EQ(descriptionOf<GenICam::OutOfRangeException>([&] { size->SetValue(70000); }),
              "Value = 70000 must be equal or smaller than Max = 65535.");
    EXPECT_EQ(size->GetValue(), 65535);
}
