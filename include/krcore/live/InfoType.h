#pragma once

namespace KrCore {

/// The kind of a property. The low four bits of the flags of a record or table row hold one of the
/// first five; a component's answer may be any of them.
enum class InfoType : int {
    ReadOnly = 1,
    ReadWrite = 2,
    Method = 5,
    CallableReadWrite = 6, ///< A property that can also be called.
    CallableReadOnly = 7,
    Unknown = 16, ///< Nobody knows the ID or name.
    Hidden = 17   ///< A component knows it and wants it to be taken for unknown.
};

constexpr bool isReadable(InfoType kind) {
    return kind == InfoType::ReadOnly || kind == InfoType::ReadWrite ||
           kind == InfoType::CallableReadWrite || kind == InfoType::CallableReadOnly;
}

constexpr bool isWritable(InfoType kind) {
    return kind == InfoType::ReadWrite || kind == InfoType::CallableReadWrite;
}

constexpr bool isCallable(InfoType kind) {
    return kind == InfoType::Method || kind == InfoType::CallableReadWrite ||
           kind == InfoType::CallableReadOnly;
}

} // namespace KrCore
