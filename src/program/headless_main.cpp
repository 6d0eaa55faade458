/// The headless session alone, for targets whose player's program is another one.

#include "program/headless_program.h"

int main(int argc, char** argv) {
  constexpr int kBadCommandLine = 2;
  CLI::App app("Vorn 1 TTS, a motor race for the ears: the headless session");
  vorn::HeadlessRequest request;
  std::string folder;
  std::optional<vorn::AidSet> aids;
  bool isHeadless = false;
  vorn::usePlainHelp(app);
  vorn::addFolderOption(app, folder);
  vorn::addAidsOption(app, aids);
  vorn::addHeadlessOptions(app, request, isHeadless)->required();
  try {
    app.parse(argc, argv);
    vorn::checkOutputs(request);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kBadCommandLine;
  }
  if (!folder.empty()) request.options.folder = folder;
  return vorn::playHeadless(request, aids.value_or(vorn::AidSet{}));
}
