#include "tests/failover/Pair.h"

#include <csignal>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace ktrv::tests {

Pair::Pair(PairKind kind)
    : kind_(kind),
      folder_(std::filesystem::path(KTRV_SERVER_FOLDER) /
              (kind == PairKind::Galera ? "pair-galera" : "pair-postgresql")) {
  const std::string name = kind == PairKind::Galera ? "galera" : "postgresql";
  script_ = popen(("exec '" KTRV_PAIR "' " + name + " '" + folder_.string() + "'").c_str(), "r");
  if (!script_ || std::fscanf(script_, "%d %d %d", &scriptId_, &ports_[0], &ports_[1]) != 3) {
    throw std::runtime_error("the two servers did not start");
  }
}

Pair::~Pair() {
  if (scriptId_ > 0) kill(scriptId_, SIGTERM);
  if (script_) pclose(script_);
}

String Pair::ConnectionString(StringView database) const {
  const String first = ToDecimal(ports_[0]);
  const String second = ToDecimal(ports_[1]);
  if (kind_ == PairKind::Galera) {
    return ConnectionString(u"127.0.0.1:" + first + u",127.0.0.1:" + second, first, database);
  }
  return ConnectionString(u"127.0.0.1,127.0.0.1", first + u"," + second, database);
}

String Pair::ConnectionStringOfSecond(StringView database) const {
  return ConnectionString(u"127.0.0.1", ToDecimal(ports_[1]), database);
}

String Pair::ConnectionString(StringView servers, StringView ports, StringView database) const {
  const String place = u";Server=" + String(servers) + u";Port=" + String(ports) + u";Database=" +
                       String(database) + u";Uid=addressbook";
  return kind_ == PairKind::Galera ? u"Driver={MariaDB Unicode}" + place + u";Pwd=addressbook"
                                   : u"Driver={PostgreSQL Unicode}" + place;
}

void Pair::LoseFirst() {
  std::ifstream file(folder_ / "1" / "pid");
  int id = 0;
  if (!(file >> id) || id <= 0) throw std::runtime_error("the first server has no pid");
  const std::string number = std::to_string(id);
  std::ifstream children("/proc/" + number + "/task/" + number + "/children");
  std::vector<int> sessions;  // PostgreSQL's are processes of their own
  for (int child = 0; children >> child;) sessions.push_back(child);
  kill(id, SIGKILL);
  for (const int session : sessions) kill(session, SIGKILL);
  if (kind_ == PairKind::PostgreSql) std::ofstream(folder_ / "promote") << "now\n";
}

}  // namespace ktrv::tests
