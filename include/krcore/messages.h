#pragma once

/// @file
/// Synchronous messages between broadcasters and listeners.

#include <krcore/messages/ArgumentsMessage.h>
#include <krcore/messages/Broadcaster.h>
#include <krcore/messages/DataMessage.h>
#include <krcore/messages/Listener.h>
#include <krcore/messages/LiveMessage.h>
#include <krcore/messages/Message.h>
