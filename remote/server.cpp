// SPDX-License-Identifier: GPL-3.0-or-later
// Requests and answers, on libmicrohttpd's one thread.
#include "remote/server.h"

#include <microhttpd.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <sstream>
#include <utility>

#include "survey/output/page.h"

extern "C" {
extern const char kelvo_remote_page[], kelvo_remote_page_end[];
}

namespace remote {

namespace {

constexpr const char* cookie_name = "kelvo-remote";

constexpr unsigned most_connections = 2 * Events::most_listeners;  // half of them for requests that are soon over
constexpr size_t connection_memory = 8192;                         // bytes; limits request line and headers
constexpr unsigned idle_s = 10;                                    // after which a connection ends
constexpr unsigned stalled_ms = 20000;                             // after which a listener's connection is lost
constexpr int listener_buffer = 16384;                             // bytes
constexpr size_t event_block = 2048;                               // bytes

using Header = std::pair<const char*, std::string>;

struct Reply {
  unsigned status = MHD_HTTP_OK;
  std::string type = "text/plain; charset=utf-8";
  std::string body{};
  std::vector<Header> headers{};
};

MHD_Result send(MHD_Connection* connection, MHD_Response* response, unsigned status, const std::string& type,
                const std::vector<Header>& headers) {
  if (response == nullptr) return MHD_NO;
  MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, type.c_str());
  MHD_add_response_header(response, MHD_HTTP_HEADER_CACHE_CONTROL, "no-store");
  MHD_add_response_header(response, "X-Content-Type-Options", "nosniff");
  MHD_add_response_header(response, "Referrer-Policy", "no-referrer");  // the link has the key
  for (const auto& [name, value] : headers) MHD_add_response_header(response, name, value.c_str());
  const MHD_Result result = MHD_queue_response(connection, status, response);
  MHD_destroy_response(response);
  return result;
}

MHD_Result send(MHD_Connection* connection, const Reply& reply) {
  return send(
      connection,
      MHD_create_response_from_buffer(reply.body.size(), const_cast<char*>(reply.body.data()), MHD_RESPMEM_MUST_COPY),
      reply.status, reply.type, reply.headers);
}

Reply line(unsigned status, const std::string& text) { return {.status = status, .body = text + "\n"}; }

// ---- The pages ----

constexpr const char* policy = "Content-Security-Policy";
constexpr const char* strict = "default-src 'none'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'; ";

// The page's one script runs because it has the number that this answer's policy names.
Reply page() {
  const std::string number = new_key();
  std::string body(kelvo_remote_page, kelvo_remote_page_end);
  constexpr std::string_view script = "<script>";
  if (const size_t at = body.find(script); at != body.npos)
    body.replace(at, script.size(), "<script nonce=\"" + number + "\">");
  return {.type = "text/html; charset=utf-8",
          .body = std::move(body),
          .headers = {{policy, std::string(strict) + "script-src 'nonce-" + number +
                                   "'; style-src 'unsafe-inline'; img-src data:; connect-src 'self'"}}};
}

Reply survey_page(const Stations& stations) {
  const auto scans = stations.scans();
  if (scans->empty()) return line(MHD_HTTP_OK, "No scan is known yet: find stations first.");
  std::ostringstream text;
  survey::write_page(text, *scans);
  return {.type = "text/html; charset=utf-8",
          .body = std::move(text).str(),
          .headers = {{policy, std::string(strict) + "style-src 'unsafe-inline'; img-src data:"}}};
}

Reply pair(const std::string& key) {
  constexpr const char* ten_years_s = "315360000";
  return {.status = MHD_HTTP_SEE_OTHER,
          .body = "Paired.\n",
          .headers = {{MHD_HTTP_HEADER_LOCATION, "/"},
                      {MHD_HTTP_HEADER_SET_COOKIE, std::string(cookie_name) + "=" + key + "; Path=/; Max-Age=" +
                                                       ten_years_s + "; HttpOnly; SameSite=Strict"}}};
}

Reply take_order(const std::string& body, Orders& orders) {
  try {
    orders.put(parse_order(body));
  } catch (const Order_error& error) {
    return line(MHD_HTTP_BAD_REQUEST, error.what());
  }
  return {.status = MHD_HTTP_ACCEPTED, .type = "application/json", .body = "{\"accepted\": true}\n"};
}

// ---- Events ----

// One listener's connection; suspended while there is nothing to send.
struct Stream {
  Desk desk;
  std::string key;
  Events::Listener* listener = nullptr;
};

// The number of listeners decides whether samples are taken.
void count(const Desk& desk) { desk.orders.set_viewers(desk.events.size()); }

ssize_t read_events(void* closure, uint64_t /*position*/, char* bytes, size_t most) {
  auto& stream = *static_cast<Stream*>(closure);
  try {
    if (stream.desk.access.key() != stream.key) return MHD_CONTENT_READER_END_OF_STREAM;
    const std::optional<size_t> length = stream.desk.events.take(*stream.listener, {bytes, most});
    return length ? static_cast<ssize_t>(*length) : ssize_t{MHD_CONTENT_READER_END_OF_STREAM};
  } catch (const std::exception&) {  // memory has run out
    return MHD_CONTENT_READER_END_WITH_ERROR;
  }
}

void end_events(void* closure) {
  const std::unique_ptr<Stream> stream(static_cast<Stream*>(closure));
  stream->desk.events.remove(stream->listener);
  count(stream->desk);
}

// A phone that left without a word is noticed when what was sent to it stays unacknowledged.
void limit_waiting(MHD_Connection* connection) {
  const MHD_ConnectionInfo* const info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
  if (info == nullptr) return;
  static_cast<void>(setsockopt(info->connect_fd, IPPROTO_TCP, TCP_USER_TIMEOUT, &stalled_ms, sizeof stalled_ms));
  static_cast<void>(setsockopt(info->connect_fd, SOL_SOCKET, SO_SNDBUF, &listener_buffer, sizeof listener_buffer));
}

MHD_Result send_events(MHD_Connection* connection, const Desk& desk) {
  auto stream = std::make_unique<Stream>(Stream{.desk = desk, .key = desk.access.key()});
  stream->listener = desk.events.add([connection] { MHD_suspend_connection(connection); },
                                     [connection] { MHD_resume_connection(connection); });
  if (stream->listener == nullptr)
    return send(connection, line(MHD_HTTP_SERVICE_UNAVAILABLE, "32 browsers are connected already"));
  limit_waiting(connection);
  count(desk);
  MHD_Response* const response =
      MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, event_block, read_events, stream.get(), end_events);
  if (response == nullptr)
    end_events(stream.release());
  else
    static_cast<void>(stream.release());  // end_events deletes it
  return send(connection, response, MHD_HTTP_OK, "text/event-stream", {});
}

// ---- Requests ----

std::optional<std::string_view> value(MHD_Connection* connection, MHD_ValueKind kind, const char* name) {
  const char* const text = MHD_lookup_connection_value(connection, kind, name);
  return text != nullptr ? std::optional<std::string_view>(text) : std::nullopt;
}

std::optional<Reply> refusal(MHD_Connection* connection, const char* method, const char* path, Access& access) {
  const auto header = [&](const char* name) { return value(connection, MHD_HEADER_KIND, name); };
  const std::optional<Refusal> refused = access.refusal({.method = method,
                                                         .path = path,
                                                         .host = header(MHD_HTTP_HEADER_HOST),
                                                         .origin = header(MHD_HTTP_HEADER_ORIGIN),
                                                         .type = header(MHD_HTTP_HEADER_CONTENT_TYPE),
                                                         .length = header(MHD_HTTP_HEADER_CONTENT_LENGTH),
                                                         .encoding = header(MHD_HTTP_HEADER_TRANSFER_ENCODING),
                                                         .cookie = value(connection, MHD_COOKIE_KIND, cookie_name),
                                                         .key = value(connection, MHD_GET_ARGUMENT_KIND, "key")});
  return refused ? std::optional(line(refused->status, refused->line)) : std::nullopt;
}

MHD_Result answer(MHD_Connection* connection, std::string_view path, const std::string& body, const Desk& desk) {
  if (path == "/") return send(connection, page());
  if (path == "/events") return send_events(connection, desk);
  if (path == "/stations") return send(connection, {.type = "application/json", .body = *desk.stations.json()});
  if (path == "/survey") return send(connection, survey_page(desk.stations));
  if (path == Access::pair_path) return send(connection, pair(desk.access.key()));
  return send(connection, take_order(body, desk.orders));
}

// Called when the headers are there, for each part of the body, and at its end. `state` is the body.
MHD_Result handle(void* closure, MHD_Connection* connection, const char* path, const char* method,
                  const char* /*version*/, const char* data, size_t* size, void** state) {
  const auto& desk = *static_cast<const Desk*>(closure);
  try {
    auto* body = static_cast<std::string*>(*state);
    if (body == nullptr) {
      if (const std::optional<Reply> refused = refusal(connection, method, path, desk.access))
        return send(connection, *refused);
      *state = new std::string;
      return MHD_YES;
    }
    if (*size == 0) return answer(connection, path, *body, desk);
    if (body->size() + *size > longest_body) return MHD_NO;
    body->append(data, *size);
    *size = 0;
    return MHD_YES;
  } catch (const std::exception&) {  // memory has run out: the connection ends
    return MHD_NO;
  }
}

void complete(void* /*closure*/, MHD_Connection* /*connection*/, void** state, MHD_RequestTerminationCode /*how*/) {
  delete static_cast<std::string*>(std::exchange(*state, nullptr));
}

}  // namespace

Server::Server(Listener& listener, const Desk& desk)
    : desk_(desk),
      daemon_(MHD_start_daemon(MHD_USE_EPOLL_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME, 0, nullptr, nullptr, handle,
                               &desk_, MHD_OPTION_LISTEN_SOCKET, listener.release(), MHD_OPTION_NOTIFY_COMPLETED,
                               complete, nullptr, MHD_OPTION_CONNECTION_LIMIT, most_connections,
                               MHD_OPTION_CONNECTION_MEMORY_LIMIT, connection_memory, MHD_OPTION_CONNECTION_TIMEOUT,
                               idle_s, MHD_OPTION_END)) {
  if (daemon_ == nullptr) throw Listen_error("the network cannot be used");
}

Server::~Server() {
  desk_.events.end();  // a suspended connection cannot end
  MHD_stop_daemon(daemon_);
}

}  // namespace remote
