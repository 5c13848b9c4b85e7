# The compiler's runtime DLLs, copied beside the executables: exceptions cross our DLLs only over one shared runtime.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libstdc++-6.dll OUTPUT_VARIABLE quor_stdcxx
    OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libgcc_s_seh-1.dll OUTPUT_VARIABLE quor_gcc
    OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libwinpthread-1.dll OUTPUT_VARIABLE quor_pthread
    OUTPUT_STRIP_TRAILING_WHITESPACE)
file(COPY "${quor_stdcxx}" "${quor_gcc}" "${quor_pthread}" DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
