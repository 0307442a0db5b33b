# Writes a manual page from a program's own help, that of its commands included.
# cmake -DPROGRAM=file -DNAME=name -DVERSION=1.2.3 -DSUMMARY=text -DPAGE=file -P ManualPage.cmake
cmake_minimum_required(VERSION 3.25)

function(help_of result)
    execute_process(COMMAND ${PROGRAM} ${ARGN} --help OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# Text as it stands: nothing in it is a request, and its hyphens can be copied into a shell.
function(verbatim result text)
    string(REPLACE "\\" "\\e" text "${text}")
    string(REPLACE "-" "\\-" text "${text}")
    string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" text "${text}")
    string(STRIP "${text}" text)
    set(${result} ".nf\n${text}\n.fi\n" PARENT_SCOPE)
endfunction()

help_of(help)
verbatim(body "${help}")
string(REPLACE "-" "\\-" summary "${SUMMARY}")
string(TOUPPER "${NAME}" title)
set(page ".TH ${title} 1 \"\" \"${NAME} ${VERSION}\" \"User Commands\"\n")
string(APPEND page ".SH NAME\n${NAME} \\- ${summary}\n.SH DESCRIPTION\n${body}")

# The commands stand in a list of their own, which ends with an empty line.
string(FIND "${help}" "\nCommands:\n" start)
if(start GREATER -1)
    string(SUBSTRING "${help}" ${start} -1 list)
    string(FIND "${list}" "\n\n" length)
    string(SUBSTRING "${list}" 0 ${length} list)
    string(REGEX MATCHALL "\n  [a-z]+ " commands "${list}")
    foreach(command IN LISTS commands)
        string(STRIP "${command}" command)
        help_of(help ${command})
        verbatim(body "${help}")
        string(TOUPPER "${command}" title)
        string(APPEND page ".SH ${title}\n${body}")
    endforeach()
endif()

if(NAME STREQUAL vantrel)
    string(APPEND page ".SH SEE ALSO\n.BR vantrelctl (1)\n")
else()
    string(APPEND page ".SH SEE ALSO\n.BR vantrel (1)\n")
endif()
file(WRITE ${PAGE} "${page}")
