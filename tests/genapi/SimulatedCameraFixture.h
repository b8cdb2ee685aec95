// A fixture with a connected simulated camera and typed access to its nodes.
#ifndef TESTS_GENAPI_SIMULATEDCAMERAFIXTURE_H
#define TESTS_GENAPI_SIMULATEDCAMERAFIXTURE_H

#include <GenApi/GenApi.h>
#include <SimulatedCameraRegisters.h>
#include <SimulatedDevice.h>
#include <gtest/gtest.h>
#include <string>

class SimulatedCameraTest : public ::testing::Test {
protected:
    GenApi::INodeMap* map() const { return m_Device.nodeMap(); }
    SimCamera::CSimulatedCamera& camera() { return m_Device.camera(); }

    GenApi::INode* node(const char* name) const {
        GenApi::INode* found = map()->GetNode(name);
        if (!found)
            ADD_FAILURE() << "no node " << name;
        return found;
    }
    template <typename T>
    T* as(const char* name) const {
        T* typed = dynamic_cast<T*>(node(name));
        if (!typed)
            ADD_FAILURE() << name << " lacks the expected interface";
        return typed;
    }
    GenApi::IInteger* integer(const char* name) const { return as<GenApi::IInteger>(name); }
    GenApi::IFloat* floating(const char* name) const { return as<GenApi::IFloat>(name); }
    GenApi::IEnumeration* enumeration(const char* name) const { return as<GenApi::IEnumeration>(name); }

private:
    SimCamera::CSimulatedDevice m_Device;
};

// Runs a statement that must throw the GenICam exception E and returns its description.
template <typename E, typename F>
std::string descriptionOf(F statement, bool fullMessage = false) {
    try {
        statement();
    } catch (const E& e) {
        return fullMessage ? e.what() : e.GetDescription();
    } catch (const GenICam::GenericException& e) {
        ADD_FAILURE() << "unexpected exception type: " << e.what();
        return std::string();
    }
    ADD_FAILURE() << "no exception";
    return std::string();
}

#endif
