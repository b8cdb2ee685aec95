// Keeps libxml2 from printing to standard error while a description is read: a malformed description is
// reported once, by the exception the engine raises, not by libxml2's messages on the side.
#ifndef GENAPI_ENGINE_QUIETXMLERRORS_H
#define GENAPI_ENGINE_QUIETXMLERRORS_H

#include <libxml/xmlerror.h>

namespace GenApiEngine {

class CQuietXmlErrors {
public:
    // libxml2 keeps its error handler per thread, so this affects the calling thread only.
    CQuietXmlErrors() : m_Handler(xmlGenericError), m_Context(xmlGenericErrorContext) {
        xmlSetGenericErrorFunc(nullptr, &ignore);
    }
    ~CQuietXmlErrors() { xmlSetGenericErrorFunc(m_Context, m_Handler); }
    CQuietXmlErrors(const CQuietXmlErrors&) = delete;
    CQuietXmlErrors& operator=(const CQuietXmlErrors&) = delete;

private:
    static void ignore(void*, const char*, ...) {}

    xmlGenericErrorFunc m_Handler;
    void* m_Context;
};

}  // namespace GenApiEngine

#endif
