// GenApi's rules for what a description means beyond its plain text: formulas as GenApi evaluates
// them, nodes a description implies or defines inside others, and the properties GenApi lists.
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

TEST(FormulaRules, IntegerConvertersKeep64BitsAndInfiniteFloatsFail) {
    SWordMap words(
        R"(<IntConverter Name="Wide"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO + 1</FormulaFrom><pValue>WideReg</pValue><Slope>Increasing</Slope></IntConverter>
  <Enumeration Name="Picked"><EnumEntry Name="Big"><Value>4611686018427387905</Value></EnumEntry><pValue>Wide</pValue></Enumeration>
  <SwissKnife Name="Ratio"><pVariable Name="A">Numerator</pVariable><pVariable Name="B">Denominator</pVariable><Formula>A/B</Formula></SwissKnife>
  <SwissKnife Name="Shrunk"><pVariable Name="A">Numerator</pVariable><pVariable Name="B">Denominator</pVariable><Formula>A/(2**(1/B))</Formula></SwissKnife>
  <Float Name="Limited"><pValue>Ratio</pValue><pMin>Ratio</pMin><Max>10</Max></Float>
  <Integer Name="Numerator"><Value>3</Value></Integer>
  <Integer Name="Denominator"><Value>0</Value></Integer>
  <IntReg Name="WideReg"><Address>0</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>)");
    CNodeMapRef& map = words.map;
    // 2^62: a double cannot hold 2^62 + 1.
    words.load({{0, 0}, {4, 0x40000000}});
    EXPECT_EQ(CIntegerPtr(map._GetNode("Wide"))->GetValue(), (int64_t(1) << 62) + 1);
    EXPECT_STREQ(CEnumerationPtr(map._GetNode("Picked"))->ToString().c_str(), "Big");

    // 3/0 is infinite: the formula fails, and so do the features reading it as value or limit.
    EXPECT_EQ(
        descriptionOf<GenICam::LogicalErrorException>([&] { CFloatPtr(map._GetNode("Ratio"))->GetValue(); }),
        "Ratio : Failed to evaluate formula 'A/B' : error message is '#Infinity somewhere!'");
    EXPECT_THROW(CFloatPtr(map._GetNode("Limited"))->GetValue(), GenICam::LogicalErrorException);
    EXPECT_THROW(CFloatPtr(map._GetNode("Limited"))->GetMin(), GenICam::LogicalErrorException);
    // Only the result counts: 3 / 2**(1/0) is 3 / infinity, which is 0.
    EXPECT_EQ(CFloatPtr(map._GetNode("Shrunk"))->GetValue(), 0.0);
    CIntegerPtr(map._GetNode("Denominator"))->SetValue(4);
    EXPECT_DOUBLE_EQ(CFloatPtr(map._GetNode("Ratio"))->GetValue(), 0.75);
    EXPECT_DOUBLE_EQ(CFloatPtr(map._GetNode("Limited"))->GetMin(), 0.75);
}

// A converter without limits of its own takes FormulaFrom at the limits of its pValue, in the order its
// slope gives; a formula that fails there fails the limit with GenApi's exception.
TEST(FormulaRules, ConverterLimitsFollowTheSlope) {
    SWordMap words(
        R"(<Integer Name="Raw"><Value>5</Value><Min>2</Min><Max>10</Max></Integer>
  <Integer Name="Zero"><Value>0</Value></Integer>
  <Converter Name="Falling"><FormulaTo>100-FROM</FormulaTo><FormulaFrom>100-TO</FormulaFrom><pValue>Raw</pValue><Slope>Decreasing</Slope></Converter>
  <Converter Name="Guessed"><FormulaTo>FROM*2</FormulaTo><FormulaFrom>TO/2</FormulaFrom><pValue>Raw</pValue></Converter>
  <Converter Name="Broken"><pVariable Name="Z">Zero</pVariable><FormulaTo>FROM*Z</FormulaTo><FormulaFrom>TO/Z</FormulaFrom><pValue>Raw</pValue><Slope>Increasing</Slope></Converter>
  <IntConverter Name="Twice"><FormulaTo>FROM/2</FormulaTo><FormulaFrom>TO*2</FormulaFrom><pValue>Raw</pValue><Slope>Increasing</Slope></IntConverter>
  <IntConverter Name="Folded"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO%4</FormulaFrom><pValue>Raw</pValue><Slope>Varying</Slope></IntConverter>
  <Converter Name="Wavy"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO%4</FormulaFrom><pValue>Raw</pValue><Slope>Varying</Slope></Converter>
  <Integer Name="Steps"><Value>6</Value><Min>0</Min><Max>60</Max><Inc>3</Inc><Representation>Linear</Representation><Unit>mm</Unit></Integer>
  <Float Name="Length"><pValue>Steps</pValue></Float>
  <Converter Name="Scaled"><FormulaTo>FROM*2</FormulaTo><FormulaFrom>TO/2</FormulaFrom><pValue>Steps</pValue><Slope>Increasing</Slope></Converter>
  <Integer Name="OverFolded"><pValue>Folded</pValue></Integer>
  <Float Name="OverWavy"><pValue>Wavy</pValue></Float>
  <Float Name="OverFalling"><pValue>Falling</pValue></Float>)");
    CNodeMapRef& map = words.map;
    CFloatPtr falling(map._GetNode("Falling"));
    EXPECT_DOUBLE_EQ(falling->GetMin(), 90.0);
    EXPECT_DOUBLE_EQ(falling->GetMax(), 98.0);
    EXPECT_DOUBLE_EQ(falling->GetValue(), 95.0);
    CFloatPtr guessed(map._GetNode("Guessed"));
    EXPECT_DOUBLE_EQ(guessed->GetMin(), 1.0);
    EXPECT_DOUBLE_EQ(guessed->GetMax(), 5.0);
    // GenApi names the converter's formula node that failed.
    EXPECT_EQ(
        descriptionOf<GenICam::LogicalErrorException>([&] { CFloatPtr(map._GetNode("Broken"))->GetMin(); }),
        "Broken_ConvertFrom : Failed to evaluate formula 'TO/Z' : error message is '#Infinity somewhere!'");
    EXPECT_THROW(CFloatPtr(map._GetNode("Broken"))->GetMax(), GenICam::LogicalErrorException);
    // An integer converter that rises and falls has the widest limits.
    CIntegerPtr twice(map._GetNode("Twice"));
    EXPECT_EQ(twice->GetMin(), 4);
    EXPECT_EQ(twice->GetMax(), 20);
    CIntegerPtr folded(map._GetNode("Folded"));
    EXPECT_EQ(folded->GetMin(), INT64_MIN);
    EXPECT_EQ(folded->GetMax(), INT64_MAX);
    EXPECT_EQ(folded->GetValue(), 1);
    // So does a float converter.
    CFloatPtr wavy(map._GetNode("Wavy"));
    EXPECT_EQ(wavy->GetMin(), -std::numeric_limits<double>::max());
    EXPECT_EQ(wavy->GetMax(), std::numeric_limits<double>::max());
    // A float over an integer steps, shows and measures as the integer does; a converter over it takes
    // its representation.
    CFloatPtr length(map._GetNode("Length"));
    ASSERT_TRUE(length->HasInc());
    EXPECT_DOUBLE_EQ(length->GetInc(), 3.0);
    EXPECT_EQ(length->GetRepresentation(), Linear);
    EXPECT_STREQ(length->GetUnit().c_str(), "mm");
    CFloatPtr scaled(map._GetNode("Scaled"));
    EXPECT_EQ(scaled->GetRepresentation(), Linear);
    EXPECT_FALSE(scaled->HasInc());
    // A value over a converter has the converter's limits.
    EXPECT_EQ(CIntegerPtr(map._GetNode("OverFolded"))->GetMax(), INT64_MAX);
    EXPECT_EQ(CFloatPtr(map._GetNode("OverWavy"))->GetMin(), -std::numeric_limits<double>::max());
    EXPECT_DOUBLE_EQ(CFloatPtr(map._GetNode("OverFalling"))->GetMax(), 98.0);
}

// A formula reads a boolean variable as 1 or 0, and follows it when it is written.
TEST(FormulaRules, BooleanVariablesReadAsOneOrZero) {
    SWordMap words(
        R"(<Boolean Name="Factory"><pValue>FactoryReg</pValue><OnValue>1</OnValue><OffValue>0</OffValue></Boolean>
  <IntSwissKnife Name="IsFactory"><pVariable Name="F">Factory</pVariable><Formula>F =1 </Formula></IntSwissKnife>
  <SwissKnife Name="Half"><pVariable Name="F">Factory</pVariable><Formula>F / 2</Formula></SwissKnife>)" +
        intReg("FactoryReg", 0x10));
    CNodeMapRef& map = words.map;
    words.port.words[0x10] = 1;
    CIntegerPtr isFactory = map._GetNode("IsFactory");
    EXPECT_EQ(isFactory->GetValue(), 1);
    EXPECT_DOUBLE_EQ(CFloatPtr(map._GetNode("Half"))->GetValue(), 0.5);
    CBooleanPtr(map._GetNode("Factory"))->SetValue(false);
    EXPECT_EQ(isFactory->GetValue(), 0);
}

// A variable may be named like a function: the formula reads the variable, and still calls the function.
TEST(FormulaRules, VariablesNamedLikeFunctionsAreVariables) {
    SWordMap words(R"(<Integer Name="Zero"><Value>0</Value></Integer>
  <IntSwissKnife Name="Unlocked"><pVariable Name="EXP">Zero</pVariable><Formula>( EXP = 1 ) ? 0 : 1</Formula></IntSwissKnife>
  <SwissKnife Name="Shifted"><pVariable Name="LN">Zero</pVariable><Formula>LN + EXP(0)</Formula></SwissKnife>)");
    EXPECT_EQ(CIntegerPtr(words.map._GetNode("Unlocked"))->GetValue(), 1);
    EXPECT_DOUBLE_EQ(CFloatPtr(words.map._GetNode("Shifted"))->GetValue(), 1.0);
    CIntegerPtr(words.map._GetNode("Zero"))->SetValue(1);
    EXPECT_EQ(CIntegerPtr(words.map._GetNode("Unlocked"))->GetValue(), 0);
}

// A formula reads an enumeration through its current entry: with a value no entry has, it fails with
// GenApi's "NULL pointer dereferenced", and so does the access of a node it guards.
TEST(FormulaRules, EnumerationVariablesWithoutACurrentEntryFail) {
    SWordMap words(
        R"(<Enumeration Name="Mode"><EnumEntry Name="Timed"><Value>1</Value></EnumEntry><pValue>ModeReg</pValue></Enumeration>
  <IntSwissKnife Name="IsTimed"><pVariable Name="M">Mode</pVariable><Formula>M=1</Formula></IntSwissKnife>
  <Integer Name="Guarded"><pIsAvailable>IsTimed</pIsAvailable><Value>5</Value></Integer>)" +
        intReg("ModeReg", 0x10));
    CNodeMapRef& map = words.map;
    words.port.words[0x10] = 7;
    CIntegerPtr isTimed = map._GetNode("IsTimed");
    EXPECT_THROW(isTimed->GetValue(), GenICam::LogicalErrorException);
    EXPECT_THROW(map._GetNode("Guarded")->GetAccessMode(), GenICam::LogicalErrorException);
    CEnumerationPtr(map._GetNode("Mode"))->SetIntValue(1);
    EXPECT_EQ(isTimed->GetValue(), 1);
    EXPECT_EQ(map._GetNode("Guarded")->GetAccessMode(), RW);
}

// GenApi's integer parser stops at a decimal point, and a float division by zero is an infinity even when
// the dividend is zero too, where a product of zero and infinity passes as not-a-number.
TEST(FormulaRules, IntegerFormulasRefuseFloatLiteralsAndDivisionsByZeroAreInfinite) {
    SWordMap words(
        R"(<Integer Name="Raw"><Value>8</Value></Integer>
  <Integer Name="Zero"><Value>0</Value></Integer>
  <Integer Name="Huge"><Value>2000</Value></Integer>
  <IntConverter Name="Quarter"><FormulaTo>FROM * 4.0</FormulaTo><FormulaFrom>TO / 4.25</FormulaFrom><pValue>Raw</pValue><Slope>Increasing</Slope></IntConverter>
  <IntSwissKnife Name="Half"><pVariable Name="R">Raw</pVariable><Formula>R / 2.0</Formula></IntSwissKnife>
  <IntSwissKnife Name="Whole"><pVariable Name="R2">Raw</pVariable><Formula>R2 / 2</Formula></IntSwissKnife>
  <SwissKnife Name="Undefined"><pVariable Name="Z">Zero</pVariable><Formula>Z / Z</Formula></SwissKnife>
  <SwissKnife Name="Product"><pVariable Name="Z">Zero</pVariable><pVariable Name="H">Huge</pVariable><Formula>Z * (2 ** H)</Formula></SwissKnife>)");
    CNodeMapRef& map = words.map;
    EXPECT_EQ(descriptionOf<GenICam::LogicalErrorException>(
                  [&] { CIntegerPtr(map._GetNode("Quarter"))->GetValue(); }),
              "Quarter_ConvertFrom : Failed to parse formula 'TO / 4.25' : error message is '# .25 - Unknown "
              "function/variable!'");
    EXPECT_EQ(
        descriptionOf<GenICam::LogicalErrorException>([&] { CIntegerPtr(map._GetNode("Half"))->GetValue(); }),
        "Half : Failed to parse formula 'R / 2.0' : error message is '# .0 - Unknown function/variable!'");
    // Digits inside a name are no literal.
    EXPECT_EQ(CIntegerPtr(map._GetNode("Whole"))->GetValue(), 4);
    EXPECT_EQ(descriptionOf<GenICam::LogicalErrorException>(
                  [&] { CFloatPtr(map._GetNode("Undefined"))->GetValue(); }),
              "Undefined : Failed to evaluate formula 'Z / Z' : error message is '#Infinity somewhere!'");
    EXPECT_TRUE(std::isnan(CFloatPtr(map._GetNode("Product"))->GetValue()));
}

TEST(DescriptionRules, StructEntriesOverrideTheirRegisterAndConditionsAreIntegersOrBooleans) {
    SWordMap words(
        R"(<StructReg Comment="Flags"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess>
    <StructEntry Name="Switch"><AccessMode>RW</AccessMode><Bit>0</Bit></StructEntry>
    <StructEntry Name="Status"><Bit>1</Bit></StructEntry>
  </StructReg>
  <Boolean Name="Hidden"><Value>0</Value><OnValue>1</OnValue><OffValue>0</OffValue></Boolean>
  <String Name="Text"><Value>0</Value></String>
  <Integer Name="Guarded"><pIsAvailable>Hidden</pIsAvailable><Value>5</Value></Integer>
  <Integer Name="Absent"><pIsImplemented>Hidden</pIsImplemented><Value>5</Value></Integer>
  <Integer Name="TextGuarded"><pIsAvailable>Text</pIsAvailable><Value>5</Value></Integer>
  <Category Name="Group"><pIsAvailable>Hidden</pIsAvailable><pFeature>TextGuarded</pFeature></Category>
  <Integer Name="Zero"><Value>0</Value></Integer>
  <Integer Name="Unavailable"><pIsAvailable>Zero</pIsAvailable><Value>5</Value></Integer>)");
    CNodeMapRef& map = words.map;
    EXPECT_EQ(map._GetNode("Switch")->GetAccessMode(), RW);
    EXPECT_EQ(map._GetNode("Status")->GetAccessMode(), RO);
    // Integers and booleans named as conditions are consulted, a string is not; a category does not
    // consult a boolean.
    EXPECT_EQ(map._GetNode("Guarded")->GetAccessMode(), NA);
    EXPECT_EQ(map._GetNode("Absent")->GetAccessMode(), NI);
    EXPECT_EQ(map._GetNode("Unavailable")->GetAccessMode(), NA);
    EXPECT_EQ(map._GetNode("TextGuarded")->GetAccessMode(), RW);
    EXPECT_EQ(map._GetNode("Group")->GetAccessMode(), RO);
    CBooleanPtr(map._GetNode("Hidden"))->SetValue(true);
    EXPECT_EQ(map._GetNode("Guarded")->GetAccessMode(), RW);
}

namespace {

std::string propertyOf(CNodeMapRef& map, const char* node, const char* property,
                       gcstring* attribute = nullptr) {
    gcstring value, attributes;
    if (!map._GetNode(node)->GetProperty(property, value, attributes))
        return "<none>";
    if (attribute)
        *attribute = attributes;
    return value.c_str();
}

const char* const propertyNodes =
    R"(<Category Name="Root"><pFeature>Gain</pFeature><pFeature>Mode</pFeature></Category>
  <Integer Name="Gain"><Extension><Vendor Key="a"/>
      <Note>text</Note></Extension><pValue>GainConverter</pValue></Integer>
  <IntConverter Name="GainConverter"><pVariable Name="ZOFFSET">Offset</pVariable><pVariable Name="A">Scale</pVariable>
    <FormulaTo> (FROM - ZOFFSET) / A </FormulaTo><FormulaFrom> TO * A + ZOFFSET </FormulaFrom><pValue>GainReg</pValue></IntConverter>
  <Integer Name="Offset"><Value>0x10</Value></Integer>
  <Integer Name="Scale"><Value>1</Value></Integer>
  <IntReg Name="GainReg"><Address>0x20</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <Enumeration Name="Mode"><EnumEntry Name="Off"><Value>0</Value></EnumEntry><EnumEntry Name="On"><Value>0x2</Value></EnumEntry>
    <pValue>ModeReg</pValue><pSelected>Gain</pSelected></Enumeration>
  <MaskedIntReg Name="ModeReg"><Address>0x24</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Bit>1</Bit><Endianess>LittleEndian</Endianess></MaskedIntReg>
  <StructReg Comment="Flags"><Address>0x30</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort>
    <pInvalidator>GainReg</pInvalidator><pInvalidator>ModeReg</pInvalidator><Endianess>LittleEndian</Endianess>
    <StructEntry Name="Flag"><Bit>0</Bit></StructEntry>
  </StructReg>
  <IntSwissKnife Name="Doubled"><pVariable Name="G">GainReg</pVariable><Constant Name="K">2</Constant><Formula>G*K</Formula></IntSwissKnife>
  <String Name="Label"><Value>0x12</Value></String>)";

}  // namespace

TEST(PropertyRules, GenApiListsDerivedLinksDefaultsAndNumbersInDecimal) {
    SWordMap words(propertyNodes);
    CNodeMapRef& map = words.map;
    gcstring attribute;

    // Dependents reach through every link, a pSelected the other way round, and a converter's formula
    // nodes; they come in the reverse of the order in which the description first names them.
    EXPECT_EQ(propertyOf(map, "GainReg", "pDependent"), "Doubled\tFlag\tGainConverter\tGain\tRoot");
    EXPECT_EQ(propertyOf(map, "Offset", "pDependent"),
              "GainConverter_ConvertFrom\tGainConverter_ConvertTo\tGainConverter\tGain\tRoot");
    EXPECT_EQ(propertyOf(map, "Mode", "pDependent"), "Gain\tRoot");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "pDependent"), "Mode\tGain\tRoot");
    EXPECT_EQ(propertyOf(map, "ModeReg", "pDependent"), "Flag\tMode\tGain\tRoot");
    EXPECT_EQ(propertyOf(map, "Root", "pDependent"), "<none>");

    // Terminals: the registers at the end of the value chain, or the node holding its own value.
    EXPECT_EQ(propertyOf(map, "Gain", "pTerminal"), "GainReg");
    EXPECT_EQ(propertyOf(map, "Mode", "pTerminal"), "ModeReg");
    EXPECT_EQ(propertyOf(map, "Offset", "pTerminal"), "Offset");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "pTerminal"), "EnumEntry_Mode_On");
    EXPECT_EQ(propertyOf(map, "Root", "pTerminal"), "<none>");
    EXPECT_EQ(propertyOf(map, "Gain", "pSelecting"), "Mode");
    EXPECT_EQ(propertyOf(map, "Mode", "pEnumEntry"), "EnumEntry_Mode_Off\tEnumEntry_Mode_On");

    // Numbers in decimal, a bit as a range of one, defaults GenApi fills in.
    EXPECT_EQ(propertyOf(map, "GainReg", "Address"), "32");
    EXPECT_EQ(propertyOf(map, "GainReg", "Sign"), "Unsigned");
    EXPECT_EQ(propertyOf(map, "GainReg", "Representation"), "PureNumber");
    EXPECT_EQ(propertyOf(map, "GainReg", "NodeType"), "IntReg");
    EXPECT_EQ(propertyOf(map, "Offset", "Value"), "16");
    EXPECT_EQ(propertyOf(map, "Label", "Value"), "0x12");
    EXPECT_EQ(propertyOf(map, "ModeReg", "LSB"), "1");
    EXPECT_EQ(propertyOf(map, "ModeReg", "MSB"), "1");
    EXPECT_EQ(propertyOf(map, "ModeReg", "Bit"), "<none>");
    EXPECT_EQ(propertyOf(map, "Flag", "NodeType"), "MaskedIntReg");
    EXPECT_EQ(propertyOf(map, "Gain", "ImposedAccessMode"), "RW");
    EXPECT_EQ(propertyOf(map, "Gain", "IsFeature"), "Yes");
    EXPECT_EQ(propertyOf(map, "Offset", "IsFeature"), "No");
    EXPECT_EQ(propertyOf(map, "Gain", "Streamable"), "No");

    // An entry: full name, its symbol, its value as a number; its device name is listed without a value.
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "Name"), "EnumEntry_Mode_On");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "Symbolic"), "On");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "Value"), "2");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "NumericValue"), "2");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "DeviceName"), "<none>");
    GenICam::gcstring_vector names;
    map._GetNode("EnumEntry_Mode_On")->GetPropertyNames(names);
    EXPECT_TRUE(names.contains("DeviceName"));
    EXPECT_EQ(propertyOf(map, "Gain", "DeviceName"), map._GetNode("Gain")->GetDeviceName().c_str());

    // A converter: variables sorted by their names, formulas as written, its formula nodes, and the slope
    // it has between its pValue's limits.
    EXPECT_EQ(propertyOf(map, "GainConverter", "pVariable", &attribute), "Scale\tOffset");
    EXPECT_STREQ(attribute.c_str(), "A\tZOFFSET");
    EXPECT_EQ(propertyOf(map, "GainConverter", "FormulaFrom"), " TO * A + ZOFFSET ");
    EXPECT_EQ(propertyOf(map, "GainConverter", "pSwissKnifeTo"), "GainConverter_ConvertTo");
    EXPECT_EQ(propertyOf(map, "GainConverter", "Slope"), "Increasing");
    EXPECT_EQ(propertyOf(map, "GainConverter", "Representation"), "<none>");

    // Extensions come back as their elements, each closed, without the whitespace between them.
    EXPECT_EQ(propertyOf(map, "Gain", "Extension"), "<Vendor Key=\"a\"></Vendor><Note>text</Note>");
    // Attributes without their names; none at all for a list whose elements have none.
    EXPECT_EQ(propertyOf(map, "Root", "pFeature", &attribute), "Gain\tMode");
    EXPECT_STREQ(attribute.c_str(), "");
}

// A selector selects what reads its selected nodes too, breadth first; a node names the selectors that
// name it before those that reach it through others. Indexed values come by their index, in decimal;
// terminals in the order GenApi numbers nodes, copies included; an alias is no dependent.
TEST(PropertyRules, SelectionsReachReadersAndListsComeInGenApisOrder) {
    SWordMap words(R"(<Integer Name="Copy"><Value>0</Value></Integer>
  <Enumeration Name="FileSel"><EnumEntry Name="A"><Value>0</Value></EnumEntry><pValue>SelReg</pValue><pSelected>Size</pSelected></Enumeration>
  <Enumeration Name="OpSel"><EnumEntry Name="Read"><Value>0</Value></EnumEntry><pValue>OpReg</pValue><pSelected>Offset</pSelected></Enumeration>
  <Integer Name="Size"><pValue>SizeReg</pValue></Integer>
  <IntSwissKnife Name="MaxOffset"><pVariable Name="S">Size</pVariable><Formula>S</Formula></IntSwissKnife>
  <Integer Name="Offset"><pValue>OffsetReg</pValue><pMax>MaxOffset</pMax></Integer>
  <Integer Name="Aliased"><pAlias>Size</pAlias><Value>1</Value></Integer>
  <Integer Name="Splitter"><pValue>OffsetReg</pValue><pValueCopy>Copy</pValueCopy></Integer>
  <Integer Name="IndexSource"><Value>1</Value></Integer>
  <Integer Name="Indexed"><pIndex>IndexSource</pIndex><ValueIndexed Index="0x3">30</ValueIndexed><ValueIndexed Index="1">0x10</ValueIndexed><ValueDefault>0x5</ValueDefault></Integer>
  <IntReg Name="Stepped"><Address>0x40</Address><pIndex Offset="0x20">IndexSource</pIndex><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>)" +
                   intReg("SelReg", 0) + intReg("OpReg", 4) + intReg("SizeReg", 8) + intReg("OffsetReg", 12));
    CNodeMapRef& map = words.map;
    gcstring attribute;

    EXPECT_EQ(propertyOf(map, "FileSel", "pSelected"), "Size\tMaxOffset\tOffset");
    EXPECT_EQ(propertyOf(map, "OpSel", "pSelected"), "Offset");
    EXPECT_EQ(propertyOf(map, "Offset", "pSelecting"), "OpSel\tFileSel");
    FeatureList_t selected;
    CSelectorPtr(map._GetNode("FileSel"))->GetSelectedFeatures(selected);
    ASSERT_EQ(selected.size(), 3u);
    EXPECT_STREQ(selected[2]->GetNode()->GetName().c_str(), "Offset");

    EXPECT_EQ(propertyOf(map, "Indexed", "ValueIndexed", &attribute), "16\t30");
    EXPECT_STREQ(attribute.c_str(), "1\t3");
    EXPECT_EQ(propertyOf(map, "Indexed", "ValueDefault"), "5");
    EXPECT_EQ(propertyOf(map, "Indexed", "pTerminal"), "Indexed");
    EXPECT_EQ(propertyOf(map, "Stepped", "pIndex", &attribute), "IndexSource");
    EXPECT_STREQ(attribute.c_str(), "32");

    EXPECT_EQ(propertyOf(map, "Splitter", "pTerminal"), "Copy\tOffsetReg");
    const std::string dependents = propertyOf(map, "Size", "pDependent");
    EXPECT_EQ(dependents.find("Aliased"), std::string::npos) << dependents;
    EXPECT_NE(dependents.find("MaxOffset"), std::string::npos) << dependents;
}

// GenApi makes nodes the description only implies: a converter's two formula nodes, evaluated with
// nothing behind their input, and an integer node for each constant of an integer formula.
TEST(DescriptionRules, ConvertersAndConstantsImplyNodesOfTheirOwn) {
    SWordMap words(propertyNodes);
    CNodeMapRef& map = words.map;
    words.port.words[0x20] = 5;

    CIntegerPtr from = map._GetNode("GainConverter_ConvertFrom");
    CIntegerPtr to = map._GetNode("GainConverter_ConvertTo");
    ASSERT_TRUE(from.IsValid());
    ASSERT_TRUE(to.IsValid());
    EXPECT_EQ(from->GetAccessMode(), RO);
    EXPECT_FALSE(from->GetNode()->IsFeature());
    // " TO * A + ZOFFSET " and " (FROM - ZOFFSET) / A " with TO and FROM at 0, A 1, ZOFFSET 16.
    EXPECT_EQ(from->GetValue(), 16);
    EXPECT_EQ(to->GetValue(), -16);
    EXPECT_EQ(from->GetMin(), INT64_MIN);
    EXPECT_EQ(from->GetMax(), INT64_MAX);
    // The converter itself still converts its pValue.
    EXPECT_EQ(CIntegerPtr(map._GetNode("Gain"))->GetValue(), 21);
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertFrom", "NodeType"), "IntSwissKnife");
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertFrom", "InputDirection"), "From");
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertTo", "Formula"), " (FROM - ZOFFSET) / A ");
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertTo", "pVariable"), "Scale\tOffset");
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertTo", "pDependent"), "GainConverter\tGain\tRoot");

    CIntegerPtr constant = map._GetNode("_Doubled_K");
    ASSERT_TRUE(constant.IsValid());
    EXPECT_EQ(constant->GetValue(), 2);
    EXPECT_EQ(constant->GetAccessMode(), RW);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Doubled"))->GetValue(), 10);
    EXPECT_EQ(propertyOf(map, "_Doubled_K", "pDependent"), "Doubled");
    // The formula reads its constant from the node, so a write to the node reaches the formula.
    constant->SetValue(3);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Doubled"))->GetValue(), 15);

    NodeList_t nodes;
    map._GetNodes(nodes);
    std::vector<std::string> names;
    for (INode* node : nodes)
        names.push_back(node->GetName().c_str());
    for (const char* implied : {"GainConverter_ConvertFrom", "GainConverter_ConvertTo", "_Doubled_K"})
        EXPECT_NE(std::find(names.begin(), names.end(), implied), names.end()) << implied;
}

// A formula defined inside a register adds to its address like a pAddress node, and is a node of its own:
// "_<register>_<name>" inside a named register, its own name inside a StructReg.
TEST(DescriptionRules, NodesDefinedInsideRegistersAreNodesOfTheirOwn) {
    SWordMap words(R"(<Integer Name="Index"><Value>2</Value></Integer>
  <IntReg Name="Indexed"><Address>0x100</Address><IntSwissKnife Name="Offset"><pVariable Name="I">Index</pVariable><Formula>I * 4</Formula></IntSwissKnife><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <StructReg Comment="Flags"><Address>0x200</Address><IntSwissKnife Name="FlagsOffset"><Formula>3 * 4</Formula></IntSwissKnife><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess>
    <StructEntry Name="FlagA"><Bit>0</Bit></StructEntry><StructEntry Name="FlagB"><Bit>1</Bit></StructEntry></StructReg>)");
    CNodeMapRef& map = words.map;
    words.port.words[0x108] = 77;
    words.port.words[0x20c] = 2;

    CIntegerPtr offset = map._GetNode("_Indexed_Offset");
    ASSERT_TRUE(offset.IsValid());
    EXPECT_EQ(map._GetNode("Offset"), nullptr);
    EXPECT_EQ(offset->GetValue(), 8);
    EXPECT_EQ(offset->GetNode()->GetDisplayName(), "_Indexed_Offset");
    EXPECT_EQ(offset->GetAccessMode(), RO);
    CIntegerPtr indexed = map._GetNode("Indexed");
    EXPECT_EQ(CRegisterPtr(indexed)->GetAddress(), 0x108);
    EXPECT_EQ(indexed->GetValue(), 77);
    // The inline formula is what the register's value depends on, so a change of its variable reaches it.
    CIntegerPtr(map._GetNode("Index"))->SetValue(3);
    words.port.words[0x10c] = 78;
    EXPECT_EQ(indexed->GetValue(), 78);

    CIntegerPtr flagsOffset = map._GetNode("FlagsOffset");
    ASSERT_TRUE(flagsOffset.IsValid());
    EXPECT_EQ(flagsOffset->GetValue(), 12);
    EXPECT_EQ(CIntegerPtr(map._GetNode("FlagA"))->GetValue(), 0);
    EXPECT_EQ(CIntegerPtr(map._GetNode("FlagB"))->GetValue(), 1);
}

// Whitespace around names and numbers does not stop the engine (GenApi refuses such a description; the
// engine loads it leniently and then reads it as if the texts were trimmed).
TEST(DescriptionRules, NamesAndNumbersWrittenWithWhitespaceAroundThemWork) {
    SWordMap words(R"(<Integer Name="Gain">
      <pValue>
        GainReg
      </pValue>
    </Integer>
    <IntReg Name="GainReg"><Address>
        0x10
      </Address><Length> 4 </Length><AccessMode>
        RW
      </AccessMode><pPort>
        Device
      </pPort><Endianess>LittleEndian</Endianess></IntReg>)");
    words.port.words[0x10] = 9;
    CIntegerPtr gain = words.map._GetNode("Gain");
    EXPECT_EQ(gain->GetAccessMode(), RW);
    EXPECT_EQ(gain->GetValue(), 9);
    gain->SetValue(11);
    EXPECT_EQ(words.port.words[0x10], 11u);
}

TEST(DescriptionRules, StructEntriesInheritEveryInvalidatorOfTheirRegister) {
    SWordMap words(propertyNodes);
    CIntegerPtr flag = words.map._GetNode("Flag");
    CIntegerPtr modeReg = words.map._GetNode("ModeReg");
    words.port.words[0x30] = 1;
    EXPECT_EQ(flag->GetValue(), 1);
    // Changed behind the map's back: the kept value holds until an invalidator changes.
    words.port.words[0x30] = 0;
    EXPECT_EQ(flag->GetValue(), 1);
    // The struct register's second invalidator reaches the entry as well as the first.
    modeReg->SetValue(0);
    EXPECT_EQ(flag->GetValue(), 0);
    EXPECT_EQ(propertyOf(words.map, "Flag", "pInvalidator"), "GainReg\tModeReg");
}
