#pragma once

namespace KrCore {

struct Context;

// How the modules above the foundation come to life. Each module defines the functions it is named
// with here, and the tables in InitTerm.cpp call them; a module that does not exist yet is in
// neither.
//
// The order of start-up: time, allocators, contexts, threads, strings, localizer, encoders, weak
// references, errors, arrays, live objects, dictionary, unit converters, Unicode, unit values,
// dialogs, files, XML, player, locks. The order of shut-down: locks (what follows runs unlocked),
// player, XML, files, dialogs, unit values, Unicode, unit converters, dictionary, live objects,
// arrays, time, errors, weak references, encoders, localizer, strings, threads, contexts,
// allocators.
//
// A start function may throw OutOfMemory. The library is then stopped as a whole, so a stop
// function copes with a module that was never started, and stopping twice is harmless.

void startTime();
void startAllocators();
void startContexts();
void startThreads();
void startStrings();
void startLocalizer();
void startEncoders();
void startErrors();
void startXML();

void stopLocks();
void stopXML();
void stopFiles();
void stopLiveObjects();
void stopErrors();
void stopWeakReferences();
void stopEncoders();
void stopLocalizer();
void stopStrings();
void stopThreads();
void stopContexts();
void stopAllocators();

// What a module keeps in a Context ends with the Context: when its thread ends, and in
// stopContexts, when the module itself has been stopped already. Listed beside the other two
// tables. Either way it is freed through the calling thread's heap.

void endLocalizerOf(Context& context);
void endEncodersOf(Context& context);
void endStringsOf(Context& context);
void endArraysOf(Context& context);
void endXMLOf(Context& context);
void endFilesOf(Context& context);

/// Calls all of these.
void endModulesOf(Context& context);

} // namespace KrCore
