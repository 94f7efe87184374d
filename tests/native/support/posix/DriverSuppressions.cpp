// What the servers' drivers do among themselves is not ours: neither what they never free, nor
// their locks and their shared settings when several threads connect at once.
// NOLINTBEGIN(bugprone-reserved-identifier) the sanitizers look for these names
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:psqlodbcw.so\nleak:libmaodbc.so\nleak:libmariadb.so\n";
}
extern "C" const char* __tsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions() {
  return "race:psqlodbcw.so\nrace:libmaodbc.so\nrace:libmariadb.so\nmutex:libmaodbc.so\n";
}
// NOLINTEND(bugprone-reserved-identifier)
