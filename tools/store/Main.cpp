// quillmar-store: looks into the protocol store of a machine and takes protocols out of it and
// back.
#include <CLI/CLI.hpp>

#include "common/Program.h"
#include "store/Commands.h"

int main(int count, char** arguments) {
  tools::StorePlace place;
  bool idsOnly = false;
  std::string id;
  std::string left;
  std::string right;
  tools::Export exported;
  tools::Import imported;

  CLI::App app(
      "Looks into the protocol store of a machine. Programs of the suite may run meanwhile.",
      "quillmar-store");
  app.require_subcommand(1);
  app.fallthrough();
  place.AddOptions(app);

  auto* list = app.add_subcommand("list", "All protocols, one a line");
  list->add_flag("--ids", idsOnly, "Nothing but the identifiers");
  auto* show = app.add_subcommand("show", "All that a protocol holds");
  show->add_option("ID", id, "Identifier of the protocol")->required();
  auto* diff = app.add_subcommand(
      "diff", "What differs between two protocols, or exported files (status 1 when they differ)");
  diff->add_option("LEFT", left, "Identifier, or file (with a \"/\", or ending in .ref)")
      ->required();
  diff->add_option("RIGHT", right, "The same")->required();
  auto* out = app.add_subcommand("export", "Writes protocols as reference texts");
  out->add_option("ID", exported.ids, "Identifiers; one alone goes to standard output");
  out->add_flag("--all", exported.all, "All protocols");
  out->add_option("--out", exported.folder,
                  "Folder for the files \"<ID>.ref\" (made when missing)");
  auto* in = app.add_subcommand("import", "Stores protocols from reference texts");
  in->add_option("FILE", imported.files, "Files with one reference text each")->required();
  in->add_option("--as", imported.asId, "Store it under this identifier");
  in->add_flag("--replace", imported.replace, "Write over protocols that the store has");
  in->add_flag("--dry-run", imported.dryRun, "Only say what would be done");
  auto* check =
      app.add_subcommand("check", "Looks for damage and for references that lead nowhere");

  return tools::RunProgram(app, count, arguments, [&] {
    const tools::StoreAccess store(place);
    if (list->parsed()) return tools::ListProtocols(store, idsOnly);
    if (show->parsed()) return tools::ShowProtocol(store, tools::FromUser(id));
    if (diff->parsed()) return tools::ShowDifferences(store, left, right);
    if (out->parsed()) return tools::ExportProtocols(store, exported);
    if (in->parsed()) return tools::ImportProtocols(store, imported);
    return check->parsed() ? tools::CheckStore(store) : tools::kTrouble;
  });
}
