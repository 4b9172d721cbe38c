kavu_add_fuzzer(stream StreamFuzz.cpp LIBS kavu_pcm)
if(TARGET fuzz_stream)
    target_include_directories(fuzz_stream PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
