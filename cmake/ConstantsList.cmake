# Writes the names of those constants of an object file that code makes at load, as a list for the linker: nm marks them
# with a B, for they are all zero until then.
#
#   cmake -DNM=... -DOBJECT=... -DLIST=... -P ConstantsList.cmake

execute_process(COMMAND ${NM} ${OBJECT} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL " B [^\n]+" made_at_load "${symbols}")
set(names "")
foreach(symbol IN LISTS made_at_load)
  string(SUBSTRING ${symbol} 3 -1 name)
  string(APPEND names "    ${name};\n")
endforeach()
file(WRITE ${LIST} "{\n${names}};\n")
