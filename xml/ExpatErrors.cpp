#include "xml/ExpatErrors.h"

#include <krcore/foundation/ErrorCode.h>

#include <iterator>

namespace KrCore {

namespace {

/// By Expat's codes 0 to 29. Kept: the messages of the last three belong to other troubles than
/// Expat's, and hosts know them by these codes (held by XMLParse.MapsErrors).
constexpr int codes[] = {
    0,
    ErrorCode::OutOfMemory,
    ErrorCode::SyntaxError,
    0, // no elements
    ErrorCode::XMLInvalidToken,
    ErrorCode::XMLUnclosedToken,
    ErrorCode::PartialCharacter,
    ErrorCode::XMLMismatchedTag,
    ErrorCode::XMLDuplicateAttribute,
    ErrorCode::XMLJunkAfterDocument,
    ErrorCode::XMLEntityError, // parameter entity
    ErrorCode::XMLEntityError, // undefined entity
    ErrorCode::XMLEntityError, // recursive entity
    ErrorCode::XMLEntityError, // asynchronous entity
    ErrorCode::XMLEntityError, // bad character reference
    ErrorCode::XMLEntityError, // binary entity
    ErrorCode::XMLEntityError, // external entity in an attribute
    ErrorCode::XMLMisplacedDeclaration,
    ErrorCode::XMLUnknownEncoding,
    ErrorCode::XMLIncorrectEncoding,
    ErrorCode::XMLUnclosedCDATA,
    ErrorCode::XMLEntityError, // external entity handling
    ErrorCode::InternalError,  // not standalone
    ErrorCode::InternalError,  // unexpected state
    ErrorCode::XMLEntityError, // entity declared in a parameter entity
    ErrorCode::XMLRequiresDTD,
    ErrorCode::InternalError, // a feature that cannot change any more
    ErrorCode::XMLUnexpectedDoctype,
    ErrorCode::CannotExecute,
    ErrorCode::XMLUnboundPrefix,
};

} // namespace

int errorCodeOfExpat(int code) noexcept {
    return code >= 0 && code < static_cast<int>(std::size(codes)) ? codes[code]
                                                                  : ErrorCode::SyntaxError;
}

} // namespace KrCore
