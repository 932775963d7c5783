#include "foundation/Context.h"
#include "foundation/LockSlots.h"
#include "foundation/ModuleHooks.h"
#include "platform/CodePage.h"
#include "text/encoders/BuiltInEncoders.h"
#include "text/encoders/CodePageTable.h"
#include "text/encoders/EncoderNames.h"
#include "text/encoders/UniversalEncoder.h"

#include <krcore/containers/HashTable.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/text/Encoder.h>

#include <cstdint>
#include <memory>
#include <utility>

namespace KrCore {

namespace {

long long asWord(const Encoder* encoder) { return reinterpret_cast<std::intptr_t>(encoder); }

const Encoder* fromWord(long long word) {
    return reinterpret_cast<const Encoder*>(static_cast<std::intptr_t>(word));
}

/// Who is registered, under which names. Every member that registers does all that can fail on
/// copies first; the caller holds the lock.
class Registry : public Heap {
public:
    ~Registry() {
        for (const long long word : owned_)
            delete fromWord(word);
    }

    const Encoder* find(const String& name) const { return fromWord(names_.find(name)); }
    bool has(const Encoder& encoder) const { return encoders_.indexOf(asWord(&encoder)) >= 0; }
    const SimpleArray& encoders() const { return encoders_; }

    /// Enters an encoder, if it is new, and its names; all of them now find it.
    void enter(const Encoder& encoder, String names) {
        HashTable updatedNames = names_;
        SimpleArray updatedEncoders = encoders_;
        while (!names.isEmpty()) {
            const String name = normalizedEncoderName(names.split(','));
            if (!name.isEmpty()) updatedNames.set(name, asWord(&encoder));
        }
        if (!has(encoder)) updatedEncoders.append(asWord(&encoder));
        names_ = std::move(updatedNames);
        encoders_ = std::move(updatedEncoders);
    }

    /// One more name, normalised, for an encoder.
    void enterName(const Encoder& encoder, const String& name) {
        HashTable updatedNames = names_;
        updatedNames.set(name, asWord(&encoder));
        names_ = std::move(updatedNames);
    }

    /// The encoder for a code page that `name` stands for, made if there is none yet; null when it
    /// stands for none or the system does not know the page.
    const Encoder* findCodePage(const String& name) {
        int page = codePageNumber(name);
        const CodePageEntry* entry =
            page >= 0 ? KrCore::findCodePage(page) : KrCore::findCodePage(name);
        if (entry) page = entry->page;
        if (page < 0) return nullptr;
        String canonical; // "CP01251" is no second encoder.
        canonical.print("CP%ld", page);
        if (const Encoder* known = find(canonical)) return known;
        return Platform::isKnownCodePage(page) ? makeCodePage(page, entry) : nullptr;
    }

    const Encoder* system = nullptr; ///< Null until somebody asks.

private:
    const Encoder* makeCodePage(int page, const CodePageEntry* entry) {
        auto encoder = std::make_unique<const UniversalEncoder>(page, entry ? entry->mapping : 0,
                                                                entry ? entry->aliases : "");
        SimpleArray updatedOwned = owned_;
        updatedOwned.append(asWord(encoder.get()));
        String names;
        encoder->getName(names);
        enter(*encoder, names);
        owned_ = std::move(updatedOwned);
        return encoder.release();
    }

    HashTable names_;
    SimpleArray encoders_; ///< In the order of registration.
    SimpleArray owned_;    ///< The code-page encoders among them.
};

constinit Registry* registry = nullptr;

String namesOf(const Encoder& encoder) {
    String names;
    encoder.getName(names);
    return names;
}

/// The registered encoders are asked without the lock: they are the host's, and may register
/// others.
const Encoder* askEncoders(const SimpleArray& encoders, const String& name) {
    for (const long long word : encoders) {
        if (const Encoder* found = fromWord(word)->find(name)) return found;
    }
    return nullptr;
}

/// Registers `encoder`, if it is new, and one more name.
void enterAlias(const Encoder& encoder, const String& alias) {
    const String names = namesOf(encoder);
    const LibraryLock guard(LockSlot::EncoderRegistry);
    if (!registry->has(encoder)) registry->enter(encoder, names);
    registry->enterName(encoder, alias);
}

const Encoder* getByName(const String& anyName) {
    if (!registry) return nullptr;
    const String name = normalizedEncoderName(anyName);
    if (name.isEmpty()) return nullptr;
    SimpleArray encoders;
    {
        const LibraryLock guard(LockSlot::EncoderRegistry);
        if (const Encoder* known = registry->find(name)) return known;
        if (const Encoder* made = registry->findCodePage(name)) return made;
        encoders = registry->encoders();
    }
    const Encoder* found = askEncoders(encoders, name);
    if (found) enterAlias(*found, name);
    return found;
}

} // namespace

void startEncoders() {
    auto started = std::make_unique<Registry>();
    for (const Encoder* encoder : builtInEncoders().all)
        started->enter(*encoder, namesOf(*encoder));
    registry = started.release();
}

void stopEncoders() { delete std::exchange(registry, nullptr); }

// The record of a thread may outlive the registry and with it the encoder of a code page.
void endEncodersOf(Context& context) { context.defaultEncoder = nullptr; }

void Encoder::add(const Encoder& encoder) {
    if (!registry) return;
    const String names = namesOf(encoder);
    const LibraryLock guard(LockSlot::EncoderRegistry);
    registry->enter(encoder, names);
}

bool Encoder::addAlias(const Encoder& encoder, const char* alias) {
    if (!registry || !alias) return false;
    const String name = normalizedEncoderName(alias);
    if (name.isEmpty()) return false;
    enterAlias(encoder, name);
    return true;
}

bool Encoder::addAlias(const char* name, const char* alias) {
    const Encoder* encoder = get(name);
    return encoder && addAlias(*encoder, alias);
}

const Encoder* Encoder::get(const char* name) { return getByName(name); }
const Encoder* Encoder::get(const unsigned short* name) { return getByName(name); }

const Encoder& Encoder::getDefault() {
    Context* context = registry ? currentContext() : nullptr;
    if (!context) return builtInEncoders().iso88591;
    if (!context->defaultEncoder) context->defaultEncoder = &getSystem();
    return *context->defaultEncoder;
}

void Encoder::setDefault(const Encoder& encoder) {
    if (Context* context = currentContext()) context->defaultEncoder = &encoder;
}

const Encoder& Encoder::getSystem() {
    if (!registry) return builtInEncoders().iso88591;
    {
        const LibraryLock guard(LockSlot::EncoderRegistry);
        if (registry->system) return *registry->system;
    }
    char name[Platform::characterSetNameSize];
    Platform::getSystemCharacterSet(name);
    const Encoder* found = get(name);
    const LibraryLock guard(LockSlot::EncoderRegistry);
    registry->system = found ? found : &builtInEncoders().iso88591;
    return *registry->system;
}

const Encoder& Encoder::getAscii() { return builtInEncoders().ascii; }
const Encoder& Encoder::getBinary() { return builtInEncoders().binary; }
const Encoder& Encoder::getUtf8() { return builtInEncoders().utf8; }
const Encoder& Encoder::getUtf32() { return builtInEncoders().ucs4; }

} // namespace KrCore
