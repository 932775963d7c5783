#pragma once

#include <krcore/containers/Array.h>
#include <krcore/messages/DataMessage.h>

namespace KrCore {

/// A message with a list of arguments; its value starts undefined and takes the answer.
class KR_API ArgumentsMessage : public DataMessage {
public:
    ArgumentsMessage(int id, const Array& args);
    ~ArgumentsMessage() override;

    const Array& getArgs() const { return args_; }

private:
    Array args_;
};

} // namespace KrCore
