@echo off
rem The highest water levels of the example as a grid, and its velocities after 0.3 hours as arrows.
cd /d "%~dp0"
..\VORANT_to_GIS.exe -b -asc -grid50 -max basin_h.dat
if errorlevel 1 goto failed
..\VORANT_to_GIS.exe -b -shp -vector -t0.3 basin_V.dat
if errorlevel 1 goto failed
echo Open basin_h_Max_g050.asc and basin_V_t000.30.shp in a GIS.
goto end
:failed
echo A conversion failed; the line that begins with ERROR says why.
:end
if not "%1"=="-b" pause
