// How the tools are stored: all of them in one registry value.

#include <cstddef>

#include "framework/base/exceptions.h"
#include "framework/base/value_stream.h"
#include "tools/Tools_obj.h"

namespace tandrel {
namespace {

constexpr char ValueName[] = "TOOLSCOMMANDS";
constexpr std::size_t StreamingBuffer = 1024;  // bytes

// The order of the stored values; writing and reading share it.
constexpr std::string TCommand::*Texts[] = {&TCommand::FName, &TCommand::FCommand,
                                            &TCommand::FArguments, &TCommand::FInitDir};
constexpr bool TCommand::*Flags[] = {&TCommand::FCaptureToolView, &TCommand::FPreviewExternal,
                                     &TCommand::FCaptureNewDoc, &TCommand::FPromptArgs,
                                     &TCommand::FCloseOnExit};

void Write(framework::TWriter& writer, const TCommands& commands) {
    writer.WriteListBegin();
    for (const TCommand& command : commands) {
        for (const auto text : Texts)
            writer.WriteString(command.*text);
        for (const auto flag : Flags)
            writer.WriteBoolean(command.*flag);
        writer.WriteString(command.FDocType);
    }
    writer.WriteListEnd();
    writer.FlushBuffer();
}

void ReadCommand(framework::TReader& reader, TCommand& command) {
    for (const auto text : Texts)
        command.*text = reader.ReadString();
    for (const auto flag : Flags)
        command.*flag = reader.ReadBoolean();
    command.FDocType = reader.ReadString();
}

void Read(framework::TReader& reader, TCommands& commands) {
    reader.ReadListBegin();
    while (!reader.EndOfList()) {
        TCommand& command = commands.AddCommand({});
        try {
            ReadCommand(reader, command);
        } catch (const framework::EReadError&) {
            // Half a tool might do something else than the whole one.
            commands.Delete(commands.Count() - 1);
            throw;
        }
    }
    reader.ReadListEnd();
}

}  // namespace

void TToolsClass::SaveToRegistry() {
    Registry_ = std::make_unique<framework::TRegistry>(RootKey);
    if (Registry_->OpenKey(Keyname, true)) {
        framework::TMemoryStream stream;
        framework::TWriter writer(stream, StreamingBuffer);
        Write(writer, Commands);
        Registry_->WriteBinary(ValueName, stream.Bytes());
    }
    Registry_.reset();
}

void TToolsClass::LoadFromRegistry() {
    Commands.Clear();
    Registry_ = std::make_unique<framework::TRegistry>(RootKey);
    if (Registry_->OpenKey(Keyname, true) && Registry_->IsBinary(ValueName)) {
        framework::TMemoryStream stream(Registry_->ReadBinary(ValueName));
        framework::TReader reader(stream, StreamingBuffer);
        try {
            Read(reader, Commands);
        } catch (const framework::EReadError&) {
            // What came before the damage is as the user left it.
        }
    }
    Registry_.reset();
}

}  // namespace tandrel
