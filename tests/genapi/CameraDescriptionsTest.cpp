// Real camera descriptions load with a memory port under them, and a walk reads every readable node.
#include "MemoryDescriptions.h"
#include <GenApi/GenApi.h>
#include <GenApiEngine/DescriptionSchema.h>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <string>
#include <vector>

using namespace GenApi;

namespace {

// Reads a node's value, limits and entries as a client would.
void readEverything(INode* node) {
    if (!IsReadable(node))
        return;
    if (IValue* value = dynamic_cast<IValue*>(node))
        value->ToString();
    if (IInteger* integer = dynamic_cast<IInteger*>(node)) {
        integer->GetMin();
        integer->GetMax();
        integer->GetInc();
    }
    if (IFloat* floating = dynamic_cast<IFloat*>(node)) {
        floating->GetMin();
        floating->GetMax();
    }
    if (IEnumeration* enumeration = dynamic_cast<IEnumeration*>(node)) {
        StringList_t symbolics;
        enumeration->GetSymbolics(symbolics);
    }
}

// The GenICam class of an exception, most specific first.
std::string typeOf(const GenICam::GenericException& e) {
    if (dynamic_cast<const GenICam::AccessException*>(&e))
        return "AccessException";
    if (dynamic_cast<const GenICam::OutOfRangeException*>(&e))
        return "OutOfRangeException";
    if (dynamic_cast<const GenICam::InvalidArgumentException*>(&e))
        return "InvalidArgumentException";
    if (dynamic_cast<const GenICam::LogicalErrorException*>(&e))
        return "LogicalErrorException";
    if (dynamic_cast<const GenICam::PropertyException*>(&e))
        return "PropertyException";
    if (dynamic_cast<const GenICam::TimeoutException*>(&e))
        return "TimeoutException";
    if (dynamic_cast<const GenICam::RuntimeException*>(&e))
        return "RuntimeException";
    return "GenericException";
}

}  // namespace

TEST(CameraDescriptions, EveryDescriptionLoadsAndEveryReadableNodeReads) {
    const std::vector<std::string> paths =
        describedCameraPaths({PC_CAMERA_DESCRIPTIONS, PC_MORE_CAMERA_DESCRIPTIONS});
    if (paths.empty())
        GTEST_SKIP() << "no camera descriptions in " << PC_CAMERA_DESCRIPTIONS;
    for (const std::string& path : paths) {
        const std::string file = describedCameraName(path) + ".xml";
        SCOPED_TRACE(file);
        CNodeMapRef map;
        ASSERT_NO_THROW(map._LoadXMLFromFile(path.c_str()));
        CMemoryPort port;
        ASSERT_TRUE(map._Connect(&port));
        NodeList_t nodes;
        map._GetNodes(nodes);
        ASSERT_GT(nodes.size(), 0u);
        size_t readable = 0;
        std::map<std::string, size_t> failures;
        for (INode* node : nodes) {
            EXPECT_FALSE(node->GetName().empty());
            try {
                if (IsReadable(node))
                    ++readable;
                readEverything(node);
            } catch (const GenICam::GenericException& e) {
                failures[typeOf(e)]++;
            }
        }
        std::cout << "[ descriptions ] " << file << ": " << nodes.size() << " nodes, " << readable
                  << " readable";
        for (const auto& failure : failures)
            std::cout << ", " << failure.second << " " << failure.first;
        std::cout << std::endl;
        // A zero-filled device may leave values without a matching entry (an invalid argument) or divide
        // by zero (a runtime error); formulas over chunk and event ports left unconnected cannot reach
        // them (an access error). Nothing worse.
        for (const auto& failure : failures) {
            EXPECT_TRUE(failure.first == "InvalidArgumentException" || failure.first == "RuntimeException" ||
                        failure.first == "LogicalErrorException" || failure.first == "AccessException")
                << failure.first;
        }
        CNodePtr root = map._GetNode("Root");
        EXPECT_TRUE(root.IsValid());
    }
}

// The link check finds nothing to complain of in the real descriptions (every pointer names a node they
// have, every formula is balanced and uses its own variables), and it finds what a broken one breaks.
TEST(CameraDescriptions, TheLinkCheckAcceptsEveryRealDescription) {
    const std::vector<std::string> paths =
        describedCameraPaths({PC_CAMERA_DESCRIPTIONS, PC_MORE_CAMERA_DESCRIPTIONS});
    for (const std::string& path : paths) {
        const std::vector<GenApiEngine::SSchemaViolation> found =
            GenApiEngine::checkDescriptionLinks(fileText(path));
        EXPECT_TRUE(found.empty()) << path << ":" << found.front().line << ": " << found.front().message;
    }
    const std::string broken = R"(<?xml version="1.0"?>
<RegisterDescription>
  <Integer Name="A"><pValue>Nowhere</pValue></Integer>
  <IntSwissKnife Name="K"><pVariable Name="X">A</pVariable><Formula>X + Y)</Formula></IntSwissKnife>
</RegisterDescription>)";
    const std::vector<GenApiEngine::SSchemaViolation> found = GenApiEngine::checkDescriptionLinks(broken);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].line, 3);
    EXPECT_EQ(found[0].message, "pValue names 'Nowhere', which the description does not have");
    EXPECT_EQ(found[1].message, "The Formula of 'K' uses 'Y', which is no variable of the node");
    EXPECT_THROW(GenApiEngine::checkDescriptionLinks("not xml"), GenICam::RuntimeException);
}
