// HTTP around the web service.

#include <atomic>
#include <chrono>
#include <iostream>
#include <thread>

#include <httplib.h>

#include "cli/interrupt.hpp"
#include "cli/program.hpp"
#include "cli/report.hpp"
#include "cli/web_service.hpp"

namespace larkstone::cli {

namespace {

void respond(WebService& service, const httplib::Request& request, httplib::Response& response) {
  Parameters parameters;
  Answer answer;
  for (const auto& [name, value] : request.params) {
    if (!parameters.emplace(name, value).second) answer.status = 400;
  }
  if (answer.status == 400) {
    answer.body = "a parameter came twice\n";
  } else {
    answer = service.answer(request.path, parameters);
  }
  response.status = answer.status;
  response.set_header("X-Content-Type-Options", "nosniff");
  response.set_header("Cache-Control", "no-cache");
  response.set_content(answer.body, answer.type);
}

/// Stops the server when the user wants it.
class Watch {
 public:
  explicit Watch(httplib::Server& server)
      : thread_([this, &server] {
          while (!done_) {
            if (interrupted()) server.stop();  // again, if it was not yet running
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
          }
        }) {}
  ~Watch() {
    done_ = true;
    thread_.join();
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

 private:
  std::atomic<bool> done_ = false;
  std::thread thread_;
};

}  // namespace

int serve(WebService& service, const std::string& host, int port) {
  httplib::Server server;
  server.set_payload_max_length(0);
  server.Get(".*", [&service](const httplib::Request& request, httplib::Response& response) {
    respond(service, request, response);
  });
  const int bound = port == 0 ? server.bind_to_any_port(host.c_str())
                              : (server.bind_to_port(host.c_str(), port) ? port : -1);
  if (bound < 0) {
    sayError(host + ":" + std::to_string(port), "the address cannot be listened on");
    return exitFailed;
  }
  const std::string address = host + ":" + std::to_string(bound);
  std::cerr << "larkstone: serving at http://" + address + "/ (Ctrl-C ends it)\n";
  const Watch watch(server);
  return server.listen_after_bind() || interrupted() ? exitDone : exitFailed;
}

}  // namespace larkstone::cli
