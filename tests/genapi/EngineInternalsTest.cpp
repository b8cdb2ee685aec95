// Pieces of the engine with rules of their own: text forms, the register cache and float formulas.
#include <FormulaCheck.h>
#include <RegisterCache.h>
#include <TextForms.h>
#include <cmath>
#include <gtest/gtest.h>

using namespace GenApiEngine;

TEST(TextForms, IntegersInEveryRepresentation) {
    EXPECT_EQ(integerToText(-12, GenApi::Linear), "-12");
    EXPECT_EQ(integerToText(0xCAFE, GenApi::HexNumber), "0xcafe");
    EXPECT_EQ(integerToText(0xC0A8012A, GenApi::IPV4Address), "192.168.1.42");
    EXPECT_EQ(integerToText(0x003053123456LL, GenApi::MACAddress), "00:30:53:12:34:56");
    int64_t value = 0;
    EXPECT_TRUE(textToInteger(" 42 ", value));
    EXPECT_EQ(value, 42);
    EXPECT_TRUE(textToInteger("0XfF", value));
    EXPECT_EQ(value, 255);
    EXPECT_TRUE(textToInteger("10.0.0.7", value));
    EXPECT_EQ(value, 0x0A000007);
    EXPECT_TRUE(textToInteger("00:30:53:12:34:56", value));
    EXPECT_EQ(value, 0x003053123456LL);
    EXPECT_FALSE(textToInteger("10.0.0", value));
    EXPECT_FALSE(textToInteger("256.0.0.1", value));
    EXPECT_FALSE(textToInteger("12abc", value));
    EXPECT_FALSE(textToInteger("", value));
    EXPECT_FALSE(textToInteger("99999999999999999999", value));
}

TEST(TextForms, FloatsBooleansAndBytes) {
    EXPECT_EQ(floatToText(1234.56, GenApi::fnFixed, 1), "1234.6");
    EXPECT_EQ(floatToText(1234.5678, GenApi::fnScientific, 3), "1.235e+03");
    EXPECT_EQ(floatToText(0.5, GenApi::fnAutomatic, 6), "0.5");
    double number = 0;
    EXPECT_TRUE(textToFloat("-2.5e3", number));
    EXPECT_DOUBLE_EQ(number, -2500.0);
    EXPECT_FALSE(textToFloat("1,5", number));
    EXPECT_FALSE(textToFloat("1e999", number));
    bool flag = false;
    EXPECT_TRUE(textToBoolean("TRUE", flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(textToBoolean("0", flag));
    EXPECT_FALSE(flag);
    EXPECT_FALSE(textToBoolean("yes", flag));
    std::vector<uint8_t> bytes;
    EXPECT_TRUE(textToBytes("0x01ff", bytes));
    EXPECT_EQ(bytes, std::vector<uint8_t>({0x01, 0xff}));
    EXPECT_EQ(bytesToText(bytes), "0x01ff");
    EXPECT_FALSE(textToBytes("0x123", bytes));
}

TEST(RegisterCache, KeepsWhatTheDescriptionAllows) {
    CRegisterCache cache;
    const size_t widthRule = cache.addRule({0x108, 4, 0, GenApi::WriteThrough});
    cache.addRule({0x10C, 4, 0, GenApi::WriteAround});
    const size_t temperatureRule = cache.addRule({0x80, 4, 4, GenApi::NoCache});  // indexed, every 4 bytes
    const size_t gainRule = cache.addRule({0x304, 4, 4, GenApi::WriteThrough});
    cache.addRule({0x318, 8, 0, GenApi::WriteThrough});  // the next register after the gains
    uint32_t value = 640;
    uint32_t read = 0;

    // A fixed register decides before an indexed pattern that happens to reach its address.
    cache.afterRead(0x108, 4, &value);
    EXPECT_TRUE(cache.read(0x108, 4, &read));
    EXPECT_EQ(read, 640u);
    EXPECT_TRUE(cache.ruleIsValid(widthRule));
    // Indexed registers are cached per address; NoCache ones never.
    cache.afterRead(0x84, 4, &value);
    EXPECT_FALSE(cache.isValid(0x84, 4));
    cache.afterRead(0x308, 4, &value);
    EXPECT_TRUE(cache.isValid(0x308, 4));
    EXPECT_FALSE(cache.ruleIsValid(gainRule));  // which index is current is not known here
    // Write-around drops the bytes; write-through keeps the written ones; a read of another length misses.
    cache.afterRead(0x10C, 4, &value);
    value = 480;
    cache.afterWrite(0x10C, 4, &value);
    EXPECT_FALSE(cache.isValid(0x10C, 4));
    value = 800;
    cache.afterWrite(0x108, 4, &value);
    EXPECT_TRUE(cache.read(0x108, 4, &read));
    EXPECT_EQ(read, 800u);
    EXPECT_FALSE(cache.read(0x108, 2, &read));
    // A write that overlaps cached bytes drops them; unknown addresses are never kept.
    const uint16_t half = 1;
    cache.afterWrite(0x109, 2, &half);
    EXPECT_FALSE(cache.isValid(0x108, 4));
    cache.afterRead(0x900, 4, &value);
    EXPECT_FALSE(cache.isValid(0x900, 4));
    // An index pattern ends at the next described register: the gains end where 0x318 begins.
    cache.afterRead(0x314, 4, &value);
    EXPECT_TRUE(cache.isValid(0x314, 4));
    cache.afterRead(0x320, 4, &value);
    EXPECT_FALSE(cache.isValid(0x320, 4));
    // Dropping a rule drops every address of its pattern.
    cache.afterRead(0x304, 4, &value);
    cache.invalidateRule(gainRule);
    EXPECT_FALSE(cache.isValid(0x304, 4));
    EXPECT_FALSE(cache.isValid(0x308, 4));
    EXPECT_FALSE(cache.ruleIsValid(temperatureRule));
    cache.afterRead(0x108, 4, &value);
    cache.clear();
    EXPECT_FALSE(cache.isValid(0x108, 4));
}

// Transfers made for named registers reach only those registers' bytes: each keeps its own under its own
// caching mode, registers of one scope at the same bytes act together, and a floating register (a computed
// address) keeps the one address it was last transferred at.
TEST(RegisterCache, TransfersActForTheRegistersOfTheirScope) {
    CRegisterCache cache;
    const size_t kept = cache.addRule({0x40, 4, 0, GenApi::WriteThrough});
    const size_t fresh = cache.addRule({0x40, 4, 0, GenApi::NoCache});
    const size_t sibling = cache.addRule({0x40, 4, 0, GenApi::WriteThrough});
    SCacheRule floatingRule{0, 4, 0, GenApi::WriteThrough};
    floatingRule.floating = true;
    const size_t floating = cache.addRule(floatingRule);
    std::vector<size_t> written;
    cache.setWriteListener([&](int64_t, int64_t, size_t rule) { written.push_back(rule); });
    const std::vector<size_t> keptScope{kept}, freshScope{fresh}, bothScope{kept, sibling},
        floatingScope{floating};
    uint32_t value = 7;
    uint32_t read = 0;

    // Outside a scope several registers claim the bytes: nothing is kept, and a write reaches them all.
    cache.afterRead(0x40, 4, &value);
    EXPECT_FALSE(cache.isValid(0x40, 4));
    {
        CTransferScope scope(&cache, &keptScope);
        cache.afterRead(0x40, 4, &value);
        EXPECT_TRUE(cache.read(0x40, 4, &read));
        EXPECT_EQ(read, 7u);
    }
    {
        CTransferScope scope(&cache, &freshScope);
        EXPECT_FALSE(cache.read(0x40, 4, &read));
        value = 9;
        cache.afterWrite(0x40, 4, &value);
        EXPECT_EQ(written, std::vector<size_t>{fresh});
    }
    {
        // The other register keeps its bytes; scopes nest and give the outer one back.
        CTransferScope scope(&cache, &keptScope);
        {
            CTransferScope inner(&cache, &freshScope);
            EXPECT_FALSE(cache.read(0x40, 4, &read));
        }
        EXPECT_TRUE(cache.read(0x40, 4, &read));
        EXPECT_EQ(read, 7u);
    }
    {
        // Two registers of one scope at the same bytes answer only while both keep the same bytes.
        CTransferScope scope(&cache, &bothScope);
        EXPECT_FALSE(cache.read(0x40, 4, &read));
        cache.afterRead(0x40, 4, &value);
        EXPECT_TRUE(cache.read(0x40, 4, &read));
        EXPECT_EQ(read, 9u);
    }
    {
        CTransferScope scope(&cache, &floatingScope);
        cache.afterRead(0x200, 4, &value);
        EXPECT_TRUE(cache.ruleIsValid(floating));
        EXPECT_TRUE(cache.read(0x200, 4, &read));
        cache.afterRead(0x204, 4, &value);
        EXPECT_FALSE(cache.isValid(0x200, 4));
        EXPECT_TRUE(cache.isValid(0x204, 4));
        cache.invalidateRule(floating);
        EXPECT_FALSE(cache.ruleIsValid(floating));
    }
    written.clear();
    cache.afterWrite(0x40, 4, &value);
    EXPECT_EQ(written, std::vector<size_t>{CRegisterCache::noRule});
    EXPECT_FALSE(cache.isValid(0x40, 4));
    // A map that keeps nothing keeps nothing, in scope or not.
    cache.setKeeping(false);
    CTransferScope scope(&cache, &keptScope);
    cache.afterRead(0x40, 4, &value);
    EXPECT_FALSE(cache.read(0x40, 4, &read));
}

TEST(FloatFormulas, EvaluateWithGenICamPrecedenceAndReportWhatTheyCannotRead) {
    const std::map<std::string, double> variables = {{"A", 3}, {"B", 0}, {"W", 640}};
    const std::map<std::string, std::string> expressions = {{"HALF", "W/2"}};
    auto value = [&](const std::string& formula) {
        double result = -12345;
        EXPECT_TRUE(GenApiEngine::evaluateFloatFormula(formula, variables, expressions, result)) << formula;
        return result;
    };
    EXPECT_EQ(value("1+2*3"), 7);
    EXPECT_EQ(value("2**3**2"), 512);  // right-associative
    EXPECT_EQ(value("(1<2) ? 5 : 6"), 5);
    EXPECT_EQ(value("0x10|1"), 17);
    EXPECT_EQ(value("(6&3)^1"), 3);
    EXPECT_EQ(value("10%3"), 1);
    EXPECT_EQ(value("1<<4>>2"), 4);
    EXPECT_EQ(value("3>=3 && 2<1"), 0);
    EXPECT_EQ(value("1<>2 || 0"), 1);
    EXPECT_EQ(value("A=3"), 1);
    EXPECT_DOUBLE_EQ(value("ROUND(2.345, 1)"), 2.3);
    EXPECT_DOUBLE_EQ(value("SQRT(ABS(-16)) + TRUNC(2.7)"), 6);
    EXPECT_EQ(value("HALF + 1"), 321);
    EXPECT_TRUE(std::isinf(value("A/B")));
    EXPECT_EQ(value("A/(2**(1/B))"), 0);

    double untouched = 7;
    EXPECT_FALSE(GenApiEngine::evaluateFloatFormula("UNKNOWN + 1", variables, expressions, untouched));
    EXPECT_FALSE(GenApiEngine::evaluateFloatFormula("FOO(1)", variables, expressions, untouched));
    EXPECT_FALSE(GenApiEngine::evaluateFloatFormula("(1 + 2", variables, expressions, untouched));
    EXPECT_EQ(untouched, 7);
}
