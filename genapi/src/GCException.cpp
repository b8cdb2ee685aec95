// GenericException: keeps the bare description and assembles the decorated message once.
#include <Base/GCException.h>
#include <sstream>

namespace GENICAM_NAMESPACE {

GenericException::GenericException(const char* pDescription, const char* pSourceFileName,
                                   unsigned int SourceLine)
    : m_Description(pDescription), m_SourceFileName(pSourceFileName), m_SourceLine(SourceLine) {
    AssembleMessage();
}

GenericException::GenericException(const char* pDescription, const char* pSourceFileName,
                                   unsigned int SourceLine, const char* pExceptionType)
    : m_ExceptionType(pExceptionType),
      m_Description(pDescription),
      m_SourceFileName(pSourceFileName),
      m_SourceLine(SourceLine) {
    AssembleMessage();
}

GenericException::GenericException(const char* pDescription, const char* pSourceFileName,
                                   unsigned int SourceLine, const char* pEntryPoint,
                                   const char* pErrorNodeName, const char* pExceptionType)
    : m_ExceptionType(pExceptionType),
      m_Description(pDescription),
      m_SourceFileName(pSourceFileName),
      m_SourceLine(SourceLine),
      m_EntryPoint(pEntryPoint),
      m_ErrorNodeName(pErrorNodeName) {
    AssembleMessage();
}

void GenericException::AssembleMessage() {
    std::ostringstream what;
    what << m_Description.c_str();
    if (!m_ExceptionType.empty()) {
        what << " : " << m_ExceptionType.c_str() << " thrown";
        if (!m_ErrorNodeName.empty()) {
            what << " in node '" << m_ErrorNodeName.c_str() << "' while calling '" << m_EntryPoint.c_str()
                 << "'";
        }
    }
    what << " (file '" << m_SourceFileName.c_str() << "', line " << m_SourceLine << ")";
    const std::string text = what.str();
    m_What.assign(text.c_str(), text.size());
}

const char* GenericException::GetDescription() const throw() {
    return m_Description.c_str();
}
const char* GenericException::GetSourceFileName() const throw() {
    return m_SourceFileName.c_str();
}
unsigned int GenericException::GetSourceLine() const throw() {
    return m_SourceLine;
}
const char* GenericException::what() const throw() {
    return m_What.c_str();
}
GenericException::~GenericException() throw() {}

}  // namespace GENICAM_NAMESPACE
