// Callbacks that nodes call when their value, limits or access may have changed.
#ifndef GENAPI_NODECALLBACK_H
#define GENAPI_NODECALLBACK_H

#include <GenApi/INode.h>

namespace GENAPI_NAMESPACE {

typedef enum _ECallbackType { cbPostInsideLock = 1, cbPostOutsideLock = 2 } ECallbackType;

class CNodeCallback {
public:
    CNodeCallback(INode* pNode, ECallbackType CallbackType) : m_pNode(pNode), m_CallbackType(CallbackType) {}
    virtual ~CNodeCallback() {}
    virtual void operator()(ECallbackType CallbackType) const = 0;
    virtual void Destroy() = 0;
    INode* GetNode() { return m_pNode; }

protected:
    INode* m_pNode;
    ECallbackType m_CallbackType;
};

template <class Function>
class Function_NodeCallback : public CNodeCallback {
public:
    Function_NodeCallback(INode* pNode, const Function& function, ECallbackType CallbackType)
        : CNodeCallback(pNode, CallbackType), m_pFunction(function) {}
    virtual void operator()(ECallbackType CallbackType) const {
        if (m_pFunction && CallbackType == m_CallbackType)
            m_pFunction(m_pNode);
    }
    virtual void Destroy() { delete this; }

private:
    const Function m_pFunction;
    Function_NodeCallback& operator=(Function_NodeCallback&);
};

template <class Function>
CNodeCallback* make_NodeCallback(INode* pNode, Function function, ECallbackType CallbackType) {
    return static_cast<CNodeCallback*>(new Function_NodeCallback<Function>(pNode, function, CallbackType));
}

template <class Function>
intptr_t Register(INode* pNode, Function f, ECallbackType CallbackType = cbPostInsideLock) {
    CNodeCallback* pCallback(make_NodeCallback(pNode, f, CallbackType));
    return pNode->RegisterCallback(pCallback);
}

template <class Client, class Member>
class Member_NodeCallback : public CNodeCallback {
public:
    Member_NodeCallback(INode* pNode, Client& client, Member member, ECallbackType CallbackType)
        : CNodeCallback(pNode, CallbackType), m_Client(client), m_pMemberFunc(member) {}
    virtual void operator()(ECallbackType CallbackType) const {
        if (m_pMemberFunc && CallbackType == m_CallbackType)
            (m_Client.*m_pMemberFunc)(m_pNode);
    }
    virtual void Destroy() { delete this; }

private:
    Client& m_Client;
    Member m_pMemberFunc;
    Member_NodeCallback& operator=(Member_NodeCallback&);
};

template <class Client, class Member>
CNodeCallback* make_NodeCallback(INode* pNode, Client& client, Member member, ECallbackType CallbackType) {
    return static_cast<CNodeCallback*>(
        new Member_NodeCallback<Client, Member>(pNode, client, member, CallbackType));
}

template <class Client, class Member>
intptr_t Register(INode* pNode, Client& c, Member m, ECallbackType CallbackType = cbPostInsideLock) {
    CNodeCallback* pCallback(make_NodeCallback(pNode, c, m, CallbackType));
    return pNode->RegisterCallback(pCallback);
}

// Removes a callback given only its handle; the handle designates the callback object.
GENAPI_DECL void Deregister(GENAPI_NAMESPACE::CallbackHandleType pCallbackInfo);

}  // namespace GENAPI_NAMESPACE

#endif
