#pragma once

#include "engine/core/copy.h"
#include "engine/network/sync_commands.h"

namespace nimbry {

// The server's side of a synchronisation: who comes in, and what is answered.

/// Lets the next client in, one at a time: the listener is closed, so that others are refused meanwhile, and the client
/// is greeted; the program log tells of it. While there is no graph data to send yet, whoever connects is dropped
/// without a word, and finds another time.
void accept_client(Copy& copy);

/// Answers "are you free?": no while a daily changeover or an upload runs.
void tell_status(Copy& copy);

/// Answers a request for a file in a conversation of its own: brings the file up to date, and sends it, or says that
/// there is none. Nothing but the six files can be asked for. A later request, or the end of the connection, ends it
/// without the end mark. A file that cannot be written or read leaves the request unanswered.
void answer_file_request(Copy& copy, SyncCommand request);

}  // namespace nimbry
