// The system's JScript engine, for running what the naming engine writes.
#pragma once

#include <string>

// Runs the script, then evaluates the expression: "number 5", "text abc", or "error: ..." with the engine's
// message.
class ScriptEngine {
public:
  ScriptEngine();
  ScriptEngine(const ScriptEngine&) = delete;
  ScriptEngine& operator=(const ScriptEngine&) = delete;
  ~ScriptEngine();

  // Empty when the script ran to its end.
  std::string run(const std::string& script);
  std::string evaluate(const std::string& expression);

private:
  struct Site;
  Site* m_site;
};
