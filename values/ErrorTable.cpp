#include "values/ErrorTable.h"

#include <krcore/foundation/ErrorCode.h>

namespace KrCore {

namespace {

constexpr ErrorEntry entries[] = {
    {ErrorCode::Ok, "Error", ""},
    {ErrorCode::General, "Error", "%1"},
    {ErrorCode::NotFound, "ReferenceError", "%1 is undefined"},
    {ErrorCode::CannotAssign, "ReferenceError", "Cannot assign value"},
    {ErrorCode::UnterminatedString, "SyntaxError", "Unterminated string constant"},
    {ErrorCode::UnterminatedComment, "SyntaxError", "Unterminated comment"},
    {ErrorCode::BadDigit, "SyntaxError", "Bad digit in number"},
    {ErrorCode::UnsupportedFeature, "SyntaxError", "Language feature '%1' is not supported"},
    {ErrorCode::SyntaxError, "SyntaxError", "Syntax error"},
    {ErrorCode::ReservedWord, "SyntaxError", "Illegal use of reserved word '%1'"},
    {ErrorCode::IllegalBreak, "SyntaxError", "Illegal break or continue outside a loop"},
    {ErrorCode::LabelNotFound, "SyntaxError", "Label not found"},
    {ErrorCode::NotConstant, "SyntaxError", "Expression is not constant"},
    {ErrorCode::TooManyClosingBraces, "SyntaxError", "Too many closing braces"},
    {ErrorCode::MissingClosingBrace, "SyntaxError", "No matching closing brace found"},
    {ErrorCode::TryWithoutCatch, "SyntaxError", "Try without catch or finally"},
    {ErrorCode::CatchWithoutTry, "SyntaxError", "catch/finally without try"},
    {ErrorCode::VariableNameExpected, "TypeError", "Variable name expected"},
    {ErrorCode::ValueExpected, "TypeError", "Variable or value expected"},
    {ErrorCode::BadArgument, "TypeError", "Bad argument %1"},
    {ErrorCode::BadArgumentList, "TypeError", "Bad argument list"},
    {ErrorCode::NotAnObject, "TypeError", "%1 is not an object"},
    {ErrorCode::NoConstructor, "ReferenceError", "%1 does not have a constructor"},
    {ErrorCode::NoValue, "ReferenceError", "%1 does not have a value"},
    {ErrorCode::NotAFunction, "ReferenceError", "%1 is not a function"},
    {ErrorCode::Expected, "SyntaxError", "Expected: %1"},
    {ErrorCode::WrongClass, "Error", "%1 cannot work with instances of this class"},
    {ErrorCode::StackOverrun, "InternalError", "Stack overrun"},
    {ErrorCode::OutOfMemory, "FatalError", "Out of memory"},
    {ErrorCode::UncaughtException, "FatalError", "Uncaught exception %1"},
    {ErrorCode::IllegalReturn, "SyntaxError", "Illegal 'return' outside of a function body"},
    {ErrorCode::BadURI, "URIError", "Bad or invalid URI: %1"},
    {ErrorCode::CannotExecute, "Error", "Cannot execute"},
    {ErrorCode::InternalError, "InternalError", "Internal error"},
    {ErrorCode::ExecutionHalted, "FatalError", "Execution halted"},
    {ErrorCode::EngineTimeout, "FatalError", "Timeout while waiting for the engine"},
    {ErrorCode::NotImplemented, "FatalError", "Not implemented"},
    {ErrorCode::CharacterConversion, "SyntaxError", "Character conversion error"},
    {ErrorCode::PartialCharacter, "SyntaxError", "Partial multibyte character found"},
    {ErrorCode::DuplicateDefault, "SyntaxError", "More than one switch default"},
    {ErrorCode::Redeclared, "TypeError", "%1 redeclared"},
    {ErrorCode::OutOfRange, "RangeError", "%1 is out of range"},
    {ErrorCode::CatchAfterUnconditional, "SyntaxError", "Catch after unconditional catch"},
    {ErrorCode::EvaluationError, "EvalError", "Evaluation error"},
    {ErrorCode::CannotConvert, "TypeError", "Cannot convert"},
    {ErrorCode::ObjectInvalid, "ReferenceError", "Object is invalid"},
    {ErrorCode::ReadOnly, "ReferenceError", "%1 is read only"},
    {ErrorCode::TypeMismatch, "TypeError", "Data type mismatch"},
    {ErrorCode::FileNotFound, "IOError", "File or folder does not exist"},
    {ErrorCode::FileExists, "IOError", "File or folder already exists"},
    {ErrorCode::NotOpen, "IOError", "I/O device is not open"},
    {ErrorCode::ReadPastEnd, "IOError", "Read past EOF"},
    {ErrorCode::IOError, "IOError", "I/O error"},
    {ErrorCode::PermissionDenied, "ReferenceError", "Permission denied"},
    {ErrorCode::UncaughtScriptException, "Error", "Uncaught JavaScript exception: %1"},
    {ErrorCode::UnsupportedProperty, "Error",
     "Object does not support the property or method '%1'"},
    {ErrorCode::CannotConnect, "IOError", "Cannot connect to %1"},
    {ErrorCode::CannotResolve, "IOError", "Cannot resolve reference"},
    {ErrorCode::IOTimeout, "IOError", "I/O Timeout"},
    {ErrorCode::NoResponse, "IOError", "No response"},
    {ErrorCode::XMLInvalidToken, "SyntaxError", "Not well-formed (invalid token)"},
    {ErrorCode::XMLUnclosedToken, "SyntaxError", "Unclosed token"},
    {ErrorCode::XMLMismatchedTag, "SyntaxError", "Mismatched tag"},
    {ErrorCode::XMLDuplicateAttribute, "TypeError", "Duplicate attribute"},
    {ErrorCode::XMLJunkAfterDocument, "TypeError", "Junk after document element"},
    {ErrorCode::XMLEntityError, "TypeError", "Entity parsing error"},
    {ErrorCode::XMLMisplacedDeclaration, "TypeError",
     "XML declaration not at start of external entity"},
    {ErrorCode::XMLUnknownEncoding, "TypeError", "Unknown encoding"},
    {ErrorCode::XMLIncorrectEncoding, "TypeError",
     "Encoding specified in XML declaration is incorrect"},
    {ErrorCode::XMLUnclosedCDATA, "TypeError", "Unclosed CDATA section"},
    {ErrorCode::XMLRequiresDTD, "TypeError", "Requested feature requires DTD support"},
    {ErrorCode::XMLUnexpectedDoctype, "TypeError", "Unexpected DOCTYPE name"},
    {ErrorCode::XMLUnboundPrefix, "TypeError", "Unbound namespace prefix"},
    {ErrorCode::UnknownAxis, "SyntaxError", "Unknown axis name: %1"},
    {ErrorCode::UnsupportedAxis, "ReferenceError", "Unsupported axis"},
    {ErrorCode::OperandExpected, "SyntaxError", "Operand expected, but found %1"},
    {ErrorCode::NodeSetExpected, "ReferenceError", "Node set expected"},
    {ErrorCode::NodeTestExpected, "SyntaxError", "Node test expected, but found %1"},
    {ErrorCode::CannotSetProperty, "TypeError", "Cannot set property %1"},
    {ErrorCode::LumascriptError, "Error", "Lumascript error: %1"},
};

constexpr int entryCount = sizeof entries / sizeof entries[0];

constexpr bool standInOrder() {
    for (int i = 0; i < entryCount; ++i) {
        if (entries[i].code != i && entries[i].code != -i) return false;
    }
    return true;
}
static_assert(standInOrder());

} // namespace

const ErrorEntry* findErrorEntry(unsigned int code) {
    return code < entryCount ? &entries[code] : nullptr;
}

} // namespace KrCore
