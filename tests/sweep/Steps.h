// What the roads are made of: single calls with what their failure reports, and the pieces of a
// procedure that several roads share. They act on the protocol object that On names.
#pragma once

#include "Procedure.h"

namespace quillmar::test {

// --- single steps ---

Procedure Label(const std::string& label);
Procedure Jump(const std::string& label);
Procedure Report(const std::string& report, const std::string& next);
Procedure Result(int result, const std::string& next = "");
// A call of the CAD, the host or the store that no protocol object makes.
Procedure Call(const std::string& call, const std::string& onFailure = "",
               const std::vector<std::string>& reports = {});
// A call of a protocol object; an empty report: its failure is nobody's report.
Procedure Store(const std::string& call, const std::string& report = "",
                const std::string& onFailure = "", Effect effect = Effect::None);
Procedure Missing(Procedure read);
Procedure Named(const std::string& label, Procedure steps);

Procedure GetKey(const std::string& section, const std::string& keyword,
                 const std::string& onFailure = "", const std::string& onSuccess = "");
Procedure PutKey(const std::string& section, const std::string& keyword,
                 const std::string& onFailure = "");
Procedure EraseKey(const std::string& section, const std::string& keyword);
Procedure GetGlobal(const std::string& item, const std::string& onFailure = "",
                    const std::string& onSuccess = "");
Procedure PutGlobal(const std::string& item, const std::string& onFailure = "");
Procedure GetParameter(const std::string& name);
Procedure GetModelId();
Procedure Open(const std::string& onFailure = "");
Procedure Close();
Procedure Erase();

// --- protocols ---

Procedure CreateNew(const std::string& onFailure);
// From a reference text, of a protocol that the store holds or not. When it does not open, it goes
// on at `unopened`; when it cannot be filled, at `unfilled`.
enum class Held { InStore, Nowhere };
Procedure OpenReference(Held held, const std::string& unopened, const std::string& unfilled);
Procedure Connection();
Procedure DataFileName(const std::string& onUnknown = "");
Procedure Mass();

// --- parts ---

// The kind is found by the type; without one it goes on at `none`.
Procedure MakePart(const std::string& none);
Procedure LocalFlag(const std::string& whenNotKept);
Procedure Caption();
// The protocol has one data parameter, the mass. A list without group ends with the view key.
Procedure ParameterList(bool withHead);
Procedure ModelPath();
// The CAD's list has one parameter that the protocol does not have; it sent another one last time.
Procedure ReadBack(const std::string& onFailure);
Procedure PhysicalProperties();
Procedure PartsVisibility();
// The protocol of a part in the CAD, by a protocol object of its own.
Procedure Obtain(const std::string& onFailure);

// --- host ---

// Before each call the host is asked whether it is ready, and told of the session.
Procedure HostCall(int method, const std::string& onFailure = "");

}  // namespace quillmar::test
