-- 検索語を数える回路。don't synthesise it
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

/* A block comment:
   process begin "open" it's */
entity hit_counter is
    generic (WIDTH : positive := 8);
    port (
        clk   : in  std_logic;
        data  : in  std_logic_vector(WIDTH - 1 downto 0);
        total : out unsigned(15 downto 0)
    );
end entity hit_counter;

architecture rtl of hit_counter is
    constant WORD : std_logic_vector(7 downto 0) := x"A5";
    signal count : unsigned(15 downto 0) := (others => '0');
begin
    process (clk)
    begin
        if clk'event and clk = '1' then -- "quoted" end if
            if data = WORD then
                count <= count + 16#FF#;
                report "件数 -- " & integer'image(to_integer(count));
            end if;
        end if;
    end process;
    total <= count;
END ARCHITECTURE rtl;
