// The built examples as child processes.
#pragma once

#include "Support/TOVChildProcess.h"

// The example of this name.
inline sProgram ExampleProgram(const std::string& sName, const std::vector<std::string>& aArguments,
                               const std::string& sFolder = "")
{
    sProgram oProgram;
    oProgram.aCommand = {PathBesideThisProgram(sName + TOV_PROGRAM_SUFFIX)};
    oProgram.aCommand.insert(oProgram.aCommand.end(), aArguments.begin(), aArguments.end());
    oProgram.sFolder = sFolder;
    return oProgram;
}

// Runs the example of this name to its end, with standard error apart.
inline sChildResult RunExample(const std::string& sName, const std::vector<std::string>& aArguments,
                               const std::string& sFolder = "")
{
    return RunProgram(ExampleProgram(sName, aArguments, sFolder), eErrorsApart);
}

// It says nothing on standard output, complains in this line, and ends with this status.
inline void ExpectComplaint(const std::string& sLine, int nStatus, const sChildResult& oResult)
{
    EXPECT_EQ(nStatus, oResult.nExitCode);
    EXPECT_EQ("", oResult.sOutput);
    EXPECT_EQ(sLine + "\n", oResult.sErrors);
}
