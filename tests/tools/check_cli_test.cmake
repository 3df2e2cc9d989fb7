# Runs zirvel-check as a user would and checks exit codes and key lines.
# Inputs: CHECKER (the program), EMULATOR (Wine runner or empty), WORK_DIR.
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")

function(run_checker expected_code expected_pattern)
  execute_process(COMMAND ${EMULATOR} "${CHECKER}" ${ARGN}
                  WORKING_DIRECTORY "${WORK_DIR}"
                  RESULT_VARIABLE code OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT code STREQUAL "${expected_code}")
    message(FATAL_ERROR "zirvel-check ${ARGN}: exit code ${code}, expected ${expected_code}\n${out}${err}")
  endif()
  if(NOT "${out}${err}" MATCHES "${expected_pattern}")
    message(FATAL_ERROR "zirvel-check ${ARGN}: output does not match '${expected_pattern}':\n${out}${err}")
  endif()
endfunction()

file(WRITE "${WORK_DIR}/config.json" "{\n  \"segmentColor\": \"#3498DB\",\n  \"toggleKey\": \"x\"\n}\n")
file(WRITE "${WORK_DIR}/good.json" "{\"wheels\": [{\"name\": \"Gra\", \"actions\": [{\"name\": \"Skok\", \"steps\": [{\"key\": \"space\", \"action\": \"click\", \"value\": 2}]}]}]}")
file(WRITE "${WORK_DIR}/bad.json" "{\"actions\": [{\"name\": \"Zły\", \"key\": \"ctrl+c\"}]}")
file(WRITE "${WORK_DIR}/broken.json" "{\"toggleKey\": \"x\",}")

run_checker(0 "Wszystko w porządku.*toggleKey: „x”" config.json)
run_checker(0 "Wszystko w porządku.*Koło 1 „Gra”, funkcje: 1.*klik x2:  space" good.json)
run_checker(1 "default.json: nieznany klawisz \"ctrl\\+c\" dla pola \"Zły\"" bad.json)
run_checker(1 "Nie udało się wczytać config.json" --settings broken.json)
run_checker(1 "Nie udało się wczytać pliku kół" missing.json)
run_checker(1 "Wszystko w porządku.*nieznany klawisz" good.json bad.json)
run_checker(2 "Użycie: zirvel-check")

# --init writes the first-run files as the engine does, and they check clean.
run_checker(0 "Wszystko w porządku.*Koło 1 „Kolo 1”, funkcje: 8.*Wszystko w porządku.*„Przełącz okno”, głos „przełącz okno”"
            --init "${WORK_DIR}/fresh")
file(SIZE "${WORK_DIR}/fresh/config.json" config_size)
if(NOT config_size EQUAL 52)
  message(FATAL_ERROR "--init wrote config.json of ${config_size} bytes")
endif()
