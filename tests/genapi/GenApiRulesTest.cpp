// GenApi's rules where they differ from a plain evaluation of the description: value texts, access modes
// and visibilities derived from other nodes, caching modes without Cachable, formulas GenApi cannot
// evaluate, read cycles and schema checks.
#include "SimulatedCameraFixture.h"
#include "WordMap.h"
#include <GenApiEngine/DescriptionSchema.h>
#include <cmath>
#include <cstring>
#include <limits>
#include <algorithm>
#include <map>

using namespace GenApi;
using GenICam::gcstring;

namespace {

const std::string rulesNodes =
    R"(<Category Name="Root"><pFeature>Visible</pFeature><pFeature>Hidden</pFeature><pFeature>Absent</pFeature></Category>
  <Category Name="Visible"><DisplayName>Visible Things</DisplayName><pFeature>Flag</pFeature><pFeature>Mode</pFeature></Category>
  <Category Name="Hidden"><Visibility>Beginner</Visibility><pFeature>Secret</pFeature></Category>
  <Category Name="Absent"><pFeature>Missing</pFeature></Category>
  <Boolean Name="Flag"><pValue>FlagReg</pValue><OnValue>3</OnValue><OffValue>2</OffValue></Boolean>
  <Enumeration Name="Mode">
    <EnumEntry Name="A"><Value>10</Value></EnumEntry>
    <EnumEntry Name="B"><pIsAvailable>Zero</pIsAvailable><Value>20</Value></EnumEntry>
    <pValue>ModeReg</pValue>
  </Enumeration>
  <Enumeration Name="Unavailable">
    <EnumEntry Name="A"><pIsAvailable>Zero</pIsAvailable><Value>1</Value></EnumEntry>
    <pValue>ModeReg</pValue>
  </Enumeration>
  <Integer Name="Secret"><Visibility>Invisible</Visibility><pValue>ValueReg</pValue></Integer>
  <Integer Name="Missing"><pIsImplemented>Zero</pIsImplemented><pValue>ValueReg</pValue></Integer>
  <Integer Name="Zero"><Value>0</Value></Integer>
  <Command Name="Start"><pValue>CommandReg</pValue><CommandValue>1</CommandValue></Command>
  <Float Name="Ratio"><pValue>RatioKnife</pValue><Min>0</Min><Max>1</Max></Float>
  <SwissKnife Name="RatioKnife"><pVariable Name="V">ValueReg</pVariable><Formula>V/1000</Formula></SwissKnife>
  <IntSwissKnife Name="Twice"><pVariable Name="R">RatioKnife</pVariable><Formula>2*R</Formula></IntSwissKnife>
  <Converter Name="Scaled"><FormulaTo>FROM*2</FormulaTo><FormulaFrom>TO/2</FormulaFrom><pValue>ValueReg</pValue><Slope>Increasing</Slope></Converter>
  <IntSwissKnife Name="ModeIsA"><pVariable Name="M">Mode</pVariable><Constant Name="K">10</Constant><Formula>M=K</Formula></IntSwissKnife>
  <Integer Name="GuardedByMode"><pIsAvailable>ModeIsA</pIsAvailable><pValue>ValueReg</pValue></Integer>
  <IntSwissKnife Name="ValueIsK"><pVariable Name="V">ValueReg</pVariable><Constant Name="K">10</Constant><Formula>V=K</Formula></IntSwissKnife>
)" + intReg("FlagReg", 0) +
    intReg("ModeReg", 4) + intReg("ValueReg", 8) + intReg("CommandReg", 12, "<Cachable>NoCache</Cachable>");

class GenApiRulesTest : public ::testing::Test {
protected:
    GenApiRulesTest() {
        m_Map._LoadXMLFromString(description(rulesNodes).c_str());
        m_Map._Connect(&m_Port, "Device");
    }
    template <typename T>
    T* node(const char* name) {
        T* typed = dynamic_cast<T*>(m_Map._GetNode(name));
        EXPECT_NE(typed, nullptr) << name;
        return typed;
    }
    void poke(int64_t address, uint32_t value) {
        m_Port.words[address] = value;
        m_Map._InvalidateNodes();
    }

    CWordPort m_Port;
    CNodeMapRef m_Map;
};

}  // namespace

TEST_F(GenApiRulesTest, ValueTextsOfEveryKindOfNode) {
    // A category shows its display name; an entry shows its value.
    EXPECT_STREQ(node<IValue>("Visible")->ToString().c_str(), "Visible Things");
    EXPECT_STREQ(node<IValue>("Hidden")->ToString().c_str(), "Hidden");
    EXPECT_STREQ(node<IValue>("EnumEntry_Mode_B")->ToString().c_str(), "20");

    // A boolean must hold its on or its off value.
    poke(0, 3);
    EXPECT_TRUE(node<IBoolean>("Flag")->GetValue());
    poke(0, 2);
    EXPECT_STREQ(node<IValue>("Flag")->ToString().c_str(), "0");
    poke(0, 7);
    EXPECT_EQ(descriptionOf<GenICam::LogicalErrorException>([&] { node<IBoolean>("Flag")->GetValue(); }),
              "Value '7' is neither true (3) nor false (2)");

    // An enumeration value without an entry cannot be converted.
    poke(4, 10);
    EXPECT_STREQ(node<IValue>("Mode")->ToString().c_str(), "A");
    poke(4, 11);
    EXPECT_THROW(node<IValue>("Mode")->ToString(), GenICam::InvalidArgumentException);
    EXPECT_EQ(node<IEnumeration>("Mode")->GetIntValue(), 11);

    // A command's text is "1" from Execute until it is done, "0" otherwise: a register that holds the
    // command value without an Execute still reads "0", while IsDone tells it is not done.
    poke(12, 0);
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "0");
    EXPECT_TRUE(node<ICommand>("Start")->IsDone());
    poke(12, 1);
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "0");
    EXPECT_FALSE(node<ICommand>("Start")->IsDone());
    poke(12, 0);
    node<ICommand>("Start")->Execute();
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "1");
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "1");
    poke(12, 0);
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "0");
    EXPECT_TRUE(node<ICommand>("Start")->IsDone());
    poke(12, 1);
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "0");

    // Floats keep the display precision; a value outside the limits is printed half a unit of its last
    // decimal nearer to them.
    poke(8, 123456);
    EXPECT_STREQ(node<IValue>("Ratio")->ToString().c_str(), "123.456");
    poke(8, 1234567);
    EXPECT_STREQ(node<IValue>("Ratio")->ToString().c_str(), "1234.56");
}

TEST_F(GenApiRulesTest, AccessModesAndVisibilitiesDerivedFromOtherNodes) {
    // No implemented entry: not implemented; no available entry: not available.
    EXPECT_EQ(node<INode>("Mode")->GetAccessMode(), RW);
    EXPECT_EQ(node<INode>("Unavailable")->GetAccessMode(), NA);
    EXPECT_EQ(node<INode>("EnumEntry_Unavailable_A")->GetAccessMode(), NA);
    // A category whose features are all not implemented is not implemented.
    EXPECT_EQ(node<INode>("Absent")->GetAccessMode(), NI);
    EXPECT_EQ(node<INode>("Visible")->GetAccessMode(), RO);
    // A category is as visible as its most visible feature, whatever visibility it states itself.
    EXPECT_EQ(node<INode>("Hidden")->GetVisibility(), Invisible);
    EXPECT_EQ(node<INode>("Visible")->GetVisibility(), Beginner);
    EXPECT_EQ(node<INode>("Root")->GetVisibility(), Beginner);
}

TEST_F(GenApiRulesTest, CachingModesWithoutCachable) {
    EXPECT_EQ(node<INode>("ValueReg")->GetCachingMode(), WriteThrough);
    EXPECT_EQ(node<INode>("CommandReg")->GetCachingMode(), NoCache);
    // Float formulas and converters default to WriteAround, and so does what reads them.
    EXPECT_EQ(node<INode>("RatioKnife")->GetCachingMode(), WriteAround);
    EXPECT_EQ(node<INode>("Ratio")->GetCachingMode(), WriteAround);
    EXPECT_EQ(node<INode>("Scaled")->GetCachingMode(), WriteAround);
    // Integer formulas pass on NoCache only.
    EXPECT_EQ(node<INode>("Twice")->GetCachingMode(), WriteThrough);
    EXPECT_EQ(node<INode>("Start")->GetCachingMode(), NoCache);
    EXPECT_EQ(node<INode>("Flag")->GetCachingMode(), WriteThrough);
}

TEST_F(GenApiRulesTest, FormulasGenApiCannotEvaluate) {
    // Constants beside an enumeration variable fail, and so does everything computed from them.
    poke(4, 10);
    EXPECT_THROW(node<IInteger>("ModeIsA")->GetValue(), GenICam::LogicalErrorException);
    EXPECT_THROW(node<INode>("GuardedByMode")->GetAccessMode(), GenICam::LogicalErrorException);
    // Constants beside integer variables are fine.
    poke(8, 10);
    EXPECT_EQ(node<IInteger>("ValueIsK")->GetValue(), 1);
}

TEST(DescriptionChecks, ReadCyclesAreRefusedWithGenApisMessage) {
    const std::string cyclic = description(
        R"(<Integer Name="Width"><pValue>WidthReg</pValue><pMax>WidthMax</pMax></Integer>
  <IntSwissKnife Name="WidthMax"><pVariable Name="OX">OffsetX</pVariable><Formula>100-OX</Formula></IntSwissKnife>
  <Integer Name="OffsetX"><pValue>OffsetReg</pValue><pMax>OffsetXMax</pMax></Integer>
  <IntSwissKnife Name="OffsetXMax"><pVariable Name="W">Width</pVariable><Formula>100-W</Formula></IntSwissKnife>
)" + intReg("WidthReg", 0) +
        intReg("OffsetReg", 4));
    CNodeMapRef map;
    EXPECT_EQ(descriptionOf<GenICam::RuntimeException>([&] { map._LoadXMLFromString(cyclic.c_str()); }),
              "read cycle detected : Width -> WidthMax -> OffsetX -> OffsetXMax -> Width");

    // Two nodes reading the same register, and a node selected by its own selector's value, are no cycle.
    const std::string acyclic = description(R"(<Integer Name="A"><pValue>R</pValue><pMax>B</pMax></Integer>
  <Integer Name="B"><pValue>R</pValue></Integer>
)" + intReg("R", 0));
    EXPECT_NO_THROW(CNodeMapRef()._LoadXMLFromString(acyclic.c_str()));
}

TEST(DescriptionChecks, SchemaViolationsAreReportedWithTheirLines) {
    EXPECT_TRUE(GenApiEngine::validateDescription(SimCamera::CSimulatedCamera::description()).empty());

    // ImposedAccessMode after Value is out of the schema's order; the model name breaks its pattern.
    std::string invalid = description(R"(<Integer Name="Late">
    <Value>1</Value>
    <ImposedAccessMode>RO</ImposedAccessMode>
  </Integer>)");
    invalid.replace(invalid.find("ModelName=\"Rules\""), 17, "ModelName=\"Bad-Name\"");
    const std::vector<GenApiEngine::SSchemaViolation> violations = GenApiEngine::validateDescription(invalid);
    ASSERT_EQ(violations.size(), 2u);
    EXPECT_EQ(violations[0].line, 5);
    EXPECT_NE(violations[0].message.find("ModelName"), std::string::npos);
    EXPECT_EQ(violations[1].line, 8);
    EXPECT_NE(violations[1].message.find("ImposedAccessMode"), std::string::npos);
    // Loading stays lenient: the same description loads.
    EXPECT_NO_THROW(CNodeMapRef()._LoadXMLFromString(invalid.c_str()));

    EXPECT_THROW(GenApiEngine::validateDescription("<not xml"), GenICam::RuntimeException);
    std::string unknownVersion = invalid;
    unknownVersion.replace(unknownVersion.find("SchemaMinorVersion=\"1\""), 22, "SchemaMinorVersion=\"7\"");
    EXPECT_THROW(GenApiEngine::validateDescription(unknownVersion), GenICam::RuntimeException);
}

TEST(PortRouting, EveryPortIsServedByTheUserPortConnectedToIt) {
    // Registers at the same address behind three ports, one of them a chunk port.
    std::string xml = description(R"(<Integer Name="Main"><pValue>MainReg</pValue></Integer>
  <Integer Name="Chunk"><pValue>ChunkReg</pValue></Integer>
  <Integer Name="Extra"><pValue>ExtraReg</pValue></Integer>
  <IntReg Name="MainReg"><Address>0x10</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <IntReg Name="ChunkReg"><Address>0x10</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>ChunkPort</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <IntReg Name="ExtraReg"><Address>0x10</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>ExtraPort</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <Port Name="ChunkPort"><ChunkID>1234</ChunkID></Port>
  <Port Name="ExtraPort"/>)");
    CNodeMapRef map;
    map._LoadXMLFromString(xml.c_str());
    CWordPort device;
    CWordPort chunk;
    device.words[0x10] = 1;
    chunk.words[0x10] = 2;
    ASSERT_TRUE(map._Connect(&device, "Device"));
    ASSERT_TRUE(map._Connect(&chunk, "ChunkPort"));

    EXPECT_EQ(CIntegerPtr(map._GetNode("Main"))->GetValue(), 1);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Chunk"))->GetValue(), 2);
    EXPECT_EQ(CRegisterPtr(map._GetNode("ChunkReg"))->GetAddress(), 0x10);
    // A port nobody connected is not implemented, and nothing reaches another port in its place.
    EXPECT_EQ(map._GetNode("Extra")->GetAccessMode(), NI);
    CWordPort extra;
    ASSERT_TRUE(map._Connect(&extra, "ExtraPort"));
    CIntegerPtr(map._GetNode("Extra"))->SetValue(7);
    EXPECT_EQ(extra.words[0x10], 7u);
    EXPECT_EQ(device.words[0x10], 1u);
    EXPECT_EQ(chunk.words[0x10], 2u);
}

TEST(PortRouting, ManyPortsAndBaseAddressesComputedAtRunTime) {
    // A main port whose registers sit above a 48-bit base an Integer holds, and twenty event ports.
    std::string nodes = R"(<Integer Name="Base"><Value>0xFFFFF0F00000</Value></Integer>
  <Integer Name="Main"><pValue>MainReg</pValue></Integer>
  <IntReg Name="MainReg"><Address>0x1A74</Address><pAddress>Base</pAddress><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>)";
    constexpr int eventPorts = 20;
    for (int i = 1; i <= eventPorts; ++i) {
        const std::string n = std::to_string(i);
        nodes += "<IntReg Name=\"Event" + n +
                 "\"><Address>0x4</Address><Length>4</Length><AccessMode>RO</AccessMode>"
                 "<pPort>Port" +
                 n +
                 "</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>"
                 "<Port Name=\"Port" +
                 n + "\"><EventID>" + std::to_string(0x9C40 + i) + "</EventID></Port>";
    }
    CNodeMapRef map;
    map._LoadXMLFromString(description(nodes).c_str());
    CWordPort device;
    device.words[0xFFFFF0F01A74] = 42;
    ASSERT_TRUE(map._Connect(&device, "Device"));
    std::vector<std::unique_ptr<CWordPort>> events;
    for (int i = 1; i <= eventPorts; ++i) {
        events.push_back(std::make_unique<CWordPort>());
        events.back()->words[0x4] = static_cast<uint32_t>(100 + i);
        ASSERT_TRUE(map._Connect(events.back().get(), ("Port" + std::to_string(i)).c_str()));
    }

    EXPECT_EQ(CIntegerPtr(map._GetNode("Main"))->GetValue(), 42);
    EXPECT_EQ(CRegisterPtr(map._GetNode("MainReg"))->GetAddress(), 0xFFFFF0F01A74);
    for (int i = 1; i <= eventPorts; ++i)
        EXPECT_EQ(CIntegerPtr(map._GetNode(("Event" + std::to_string(i)).c_str()))->GetValue(), 100 + i) << i;
    CIntegerPtr(map._GetNode("Main"))->SetValue(43);
    EXPECT_EQ(device.words[0xFFFFF0F01A74], 43u);
}

// A node that is not there takes with it what needs it: a condition that is not implemented holds for
// nothing, whatever its register reads, and a register whose index is not implemented is not either.
TEST(AccessRules, ConditionsAndIndicesThatAreNotThereTakeTheirNodesWithThem) {
    SWordMap words(
        R"(<Integer Name="Zero"><Value>0</Value></Integer>
  <Integer Name="Selector"><pIsImplemented>Zero</pIsImplemented><Value>0</Value></Integer>
  <IntReg Name="Indexed"><Address>0x10</Address><pIndex Offset="4">Selector</pIndex><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <MaskedIntReg Name="Gate"><pIsImplemented>Zero</pIsImplemented><Address>0x20</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Bit>0</Bit><Endianess>LittleEndian</Endianess></MaskedIntReg>
  <MaskedIntReg Name="OpenGate"><Address>0x20</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Bit>0</Bit><Endianess>LittleEndian</Endianess></MaskedIntReg>
  <Enumeration Name="Mode"><EnumEntry Name="Gated"><pIsImplemented>Gate</pIsImplemented><Value>0</Value></EnumEntry>
    <EnumEntry Name="Open"><pIsImplemented>OpenGate</pIsImplemented><Value>1</Value></EnumEntry><pValue>ModeReg</pValue></Enumeration>)" +
        intReg("ModeReg", 0x30));
    CNodeMapRef& map = words.map;
    words.port.words[0x20] = 1;
    EXPECT_EQ(map._GetNode("Selector")->GetAccessMode(), NI);
    EXPECT_EQ(map._GetNode("Indexed")->GetAccessMode(), NI);
    EXPECT_EQ(map._GetNode("Gate")->GetAccessMode(), NI);
    // The same bit read by a register that is there implements its entry.
    EXPECT_EQ(map._GetNode("EnumEntry_Mode_Open")->GetAccessMode(), RO);
    EXPECT_EQ(map._GetNode("EnumEntry_Mode_Gated")->GetAccessMode(), NI);
}

// A node passes on what it is computed from: a formula is not implemented when a variable is not, and
// not available when one is not available; a value whose limit is not implemented is not implemented; a
// condition that cannot be read gives its node its own access, not the condition's verdict.
TEST(AccessRules, FormulasLimitsAndConditionsPassOnWhatTheyAreComputedFrom) {
    SWordMap words(R"(<Integer Name="Zero"><Value>0</Value></Integer>
  <Integer Name="Absent"><pIsImplemented>Zero</pIsImplemented><Value>1</Value></Integer>
  <Integer Name="Busy"><pIsAvailable>Zero</pIsAvailable><Value>1</Value></Integer>
  <Integer Name="Here"><Value>1</Value></Integer>
  <IntSwissKnife Name="FromAbsent"><pVariable Name="A">Here</pVariable><pVariable Name="B">Absent</pVariable><Formula>A+B</Formula></IntSwissKnife>
  <IntSwissKnife Name="FromBusy"><pVariable Name="A">Busy</pVariable><Formula>A</Formula></IntSwissKnife>
  <IntSwissKnife Name="FromBoth"><pVariable Name="A">Busy</pVariable><pVariable Name="B">Absent</pVariable><Formula>A+B</Formula></IntSwissKnife>
  <SwissKnife Name="FloatFromBusy"><pVariable Name="A">Busy</pVariable><Formula>A</Formula></SwissKnife>
  <IntConverter Name="ConvertedWithAbsent"><pVariable Name="X">Absent</pVariable><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>Reg</pValue></IntConverter>
  <Integer Name="AbsentMax"><pValue>Reg</pValue><pMax>Absent</pMax></Integer>
  <Integer Name="BusyMax"><pValue>Reg</pValue><pMax>Busy</pMax></Integer>
  <Integer Name="AvailableIfAbsent"><pIsAvailable>Absent</pIsAvailable><Value>1</Value></Integer>
  <Integer Name="ImplementedIfBusy"><pIsImplemented>Busy</pIsImplemented><Value>1</Value></Integer>)" +
                   intReg("Reg", 0x10));
    CNodeMapRef& map = words.map;
    const auto access = [&](const char* name) { return map._GetNode(name)->GetAccessMode(); };
    EXPECT_EQ(access("FromAbsent"), NI);
    EXPECT_EQ(access("FromBusy"), NA);
    EXPECT_EQ(access("FromBoth"), NI);
    EXPECT_EQ(access("FloatFromBusy"), NA);
    EXPECT_EQ(access("ConvertedWithAbsent"), NI);
    EXPECT_EQ(access("AbsentMax"), NI);
    // A limit that is only unavailable leaves the value as its register makes it.
    EXPECT_EQ(access("BusyMax"), RW);
    EXPECT_EQ(access("AvailableIfAbsent"), NI);
    EXPECT_EQ(access("ImplementedIfBusy"), NA);
}

// A float outside its limits is printed half a unit of its text's last decimal nearer to them; in
// scientific notation that unit is the mantissa's, so a tiny value moves by far more than itself.
TEST(ValueRules, FloatsOutsideTheirLimitsArePrintedHalfAUnitNearer) {
    SWordMap words(R"(<Float Name="Above"><Value>56780.984375</Value><Min>-2</Min><Max>2</Max></Float>
  <Float Name="Below"><Value>-10</Value><Min>0.015</Min><Max>45.8</Max></Float>
  <Float Name="Fine"><Value>836.87371808904447</Value><Min>373</Min><Max>825</Max></Float>
  <Float Name="Tiny"><Value>1.0223622621229056e-07</Value><Min>9.7e30</Min><Max>1.9e34</Max></Float>
  <Float Name="Inside"><Value>1.5</Value><Min>0</Min><Max>2</Max></Float>)");
    const auto text = [&](const char* name) {
        return std::string(CFloatPtr(words.map._GetNode(name))->ToString().c_str());
    };
    EXPECT_EQ(text("Above"), "56780.5");
    EXPECT_EQ(text("Below"), "-9.5");
    EXPECT_EQ(text("Fine"), "836.873");
    EXPECT_EQ(text("Tiny"), "5.10224e-06");
    EXPECT_EQ(text("Inside"), "1.5");
    // The value itself is untouched.
    EXPECT_DOUBLE_EQ(CFloatPtr(words.map._GetNode("Below"))->GetValue(), -10.0);
}

// A value written to pValue and to each pValueCopy must fit all of them: its limits are where their ranges
// overlap.
TEST(ValueRules, CopiedValuesTakeTheLimitsAllTheirTargetsShare) {
    SWordMap words(intReg("Wide", 0) + intReg("Narrow", 8, "", 2) +
                   R"(<Integer Name="Both"><pValue>Wide</pValue><pValueCopy>Narrow</pValueCopy></Integer>
  <Integer Name="Alone"><pValue>Wide</pValue></Integer>)");
    CIntegerPtr both(words.map._GetNode("Both"));
    EXPECT_EQ(both->GetMin(), 0);
    EXPECT_EQ(both->GetMax(), 65535);
    EXPECT_EQ(CIntegerPtr(words.map._GetNode("Alone"))->GetMax(), 4294967295);
    both->SetValue(300);
    EXPECT_EQ(words.port.words[0], 300u);
    EXPECT_EQ(words.port.words[8] & 0xFFFF, 300u);
    EXPECT_THROW(both->SetValue(70000), GenICam::OutOfRangeException);

    SWordMap floats(
        R"(<FloatReg Name="First"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></FloatReg>
  <FloatReg Name="Second"><Address>4</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></FloatReg>
  <Float Name="Shared"><pValue>First</pValue><pValueCopy>Second</pValueCopy></Float>)");
    CFloatPtr(floats.map._GetNode("Shared"))->SetValue(2.5);
    EXPECT_EQ(CFloatPtr(floats.map._GetNode("First"))->GetValue(), 2.5);
    EXPECT_EQ(CFloatPtr(floats.map._GetNode("Second"))->GetValue(), 2.5);
}

// Integers whose value the description writes as a number: one that nothing reads keeps its written value
// through invalidations; one that a formula reads passes each write on to the formula.
TEST(ValueRules, IntegersWithAValueKeepWhatIsWrittenAndPassItOn) {
    SWordMap words(R"(<Integer Name="Alone"><Value>0x10</Value><Min>0</Min><Max>100</Max></Integer>
  <Integer Name="Read"><Value>3</Value><Min>0</Min><Max>100</Max></Integer>
  <IntSwissKnife Name="Twice"><pVariable Name="R">Read</pVariable><Formula>2*R</Formula></IntSwissKnife>)");
    CNodeMapRef& map = words.map;
    CIntegerPtr alone(map._GetNode("Alone")), read(map._GetNode("Read")), twice(map._GetNode("Twice"));
    EXPECT_EQ(alone->GetValue(), 16);
    EXPECT_EQ(alone->GetMax(), 100);
    alone->SetValue(42);
    map._InvalidateNodes();
    EXPECT_EQ(alone->GetValue(), 42);
    EXPECT_EQ(alone->ToString(), "42");
    EXPECT_THROW(alone->SetValue(101), GenICam::OutOfRangeException);
    EXPECT_EQ(alone->GetValue(), 42);
    EXPECT_EQ(twice->GetValue(), 6);
    read->SetValue(7);
    EXPECT_EQ(read->GetValue(), 7);
    EXPECT_EQ(twice->GetValue(), 14);
}

// A float outside its limits prints half a unit of its text's last decimal nearer to them, but one whose
// text already lies on the limits (a write of the minimum read back through a converter) prints as it is.
TEST(FloatTexts, ValuesJustOutsideTheirLimitsPrintAsTheyRound) {
    SWordMap words(
        intReg("RawReg", 0x70) +
        R"(<Converter Name="Scaled"><FormulaTo>(FROM * 1000) / 0.122070312</FormulaTo><FormulaFrom>TO * 0.000122070312</FormulaFrom><pValue>RawReg</pValue><Slope>Varying</Slope></Converter>
  <Float Name="Ratio"><pValue>Scaled</pValue><Min>0.5</Min><Max>1</Max></Float>
  <Float Name="Far"><pValue>Scaled</pValue><Min>-2</Min><Max>2</Max></Float>)");
    words.load({{0x70, 0}});
    CFloatPtr ratio(words.map._GetNode("Ratio"));
    ratio->SetValue(0.5);
    EXPECT_LT(ratio->GetValue(), 0.5);
    EXPECT_STREQ(ratio->ToString().c_str(), "0.5");
    words.load({{0x70, 465149952}});  // about 56781 through the converter, printed "56781" unmoved
    EXPECT_STREQ(CFloatPtr(words.map._GetNode("Far"))->ToString().c_str(), "56780.5");
}
