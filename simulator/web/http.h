// Just enough of HTTP for one page and one WebSocket.
#ifndef OSTREL_SIMULATOR_WEB_HTTP_H
#define OSTREL_SIMULATOR_WEB_HTTP_H

#include <map>
#include <string>

namespace ostrel {

constexpr size_t MAX_REQUEST_BYTES = 8192;

struct HttpRequest {
    std::string method;
    std::string target;
    std::map<std::string, std::string> headers; // names in lower case

    std::string header(const char* name) const;

    // Whether the comma-separated words of a header contain `word`, in any case.
    bool hasWord(const char* name, const std::string& word) const;
};

// The letters of ASCII; the others stay.
std::string lowerCase(std::string text);

enum class HttpResult { Incomplete, Complete, Malformed };

// Reads a request from the beginning of `bytes` and removes it from there when it is complete. Longer ones than
// MAX_REQUEST_BYTES and requests with a body are malformed.
HttpResult readRequest(std::string& bytes, HttpRequest& request);

// A whole answer after which the connection is closed. `status` is "200 OK". A page may open a WebSocket to where it
// came from, and to nowhere else: `host` is the request's when it is known to be the panel's own.
std::string answer(
    const std::string& status, const std::string& contentType, const std::string& body, bool withBody,
    const std::string& host = "");

} // namespace ostrel

#endif
